#include "ui/dialogs/FileChooser.h"

#include <QFileDialog>
#include <QFileSystemModel>
#include <QSortFilterProxyModel>

namespace wendmark {

namespace {

/// Lets folders through, and files that can be run.
class ProgramsOnly final : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        const auto& files = *qobject_cast<QFileSystemModel*>(sourceModel());
        const QModelIndex index = files.index(row, 0, parent);
        return files.isDir(index) || files.fileInfo(index).isExecutable();
    }
};

QString choose(QFileDialog& dialog) {
    dialog.setObjectName(QStringLiteral("CDialog"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

QString chooseFile(QWidget* parent, const QString& title, const QString& pattern,
                   const QString& usualEnding) {
    QFileDialog dialog(parent, title, QString(), pattern);
    dialog.setDefaultSuffix(usualEnding);
    return choose(dialog);
}

QString chooseProgram(QWidget* parent, const QString& title) {
#ifdef _WIN32
    return chooseFile(parent, title, QStringLiteral("*.exe"));
#else
    QFileDialog dialog(parent, title);
    dialog.setOption(QFileDialog::DontUseNativeDialog); // Only Qt's own takes a filter of ours.
    dialog.setProxyModel(new ProgramsOnly(&dialog));
    return choose(dialog);
#endif
}

} // namespace wendmark
