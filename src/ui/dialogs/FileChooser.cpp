#include "ui/dialogs/FileChooser.h"

#include "ui/WindowPlace.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
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

/// Takes a name with quotation marks for what it is; Qt's dialog takes it for several names.
class FileDialog final : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    void accept() override {
        const auto* const field =
            findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); // Not in native ones.
        const QString name = field == nullptr ? QString() : field->text();
        const QString path = directory().absoluteFilePath(name);
        if (name.contains(QLatin1Char('"')) && QFileInfo(path).isFile()) {
            m_quoted = path;
            done(Accepted);
            return;
        }
        QFileDialog::accept();
    }

    QString choose() {
        setObjectName(QStringLiteral("CDialog"));
        setFileMode(QFileDialog::ExistingFile);
        adjustSize();
        centreOverParent(*this);
        keepOnScreen(*this);
        if (exec() != QDialog::Accepted)
            return {};
        return m_quoted.isEmpty() ? selectedFiles().value(0) : m_quoted;
    }

private:
    QString m_quoted;
};

} // namespace

QString chooseFile(QWidget* parent, const QString& title, const QString& pattern, const QString& usualEnding,
                   const QString& folder) {
    FileDialog dialog(parent, title, folder, pattern);
    dialog.setDefaultSuffix(usualEnding);
    return dialog.choose();
}

QString chooseProgram(QWidget* parent, const QString& title) {
#ifdef _WIN32
    return chooseFile(parent, title, QStringLiteral("*.exe"));
#else
    FileDialog dialog(parent, title);
    dialog.setOption(QFileDialog::DontUseNativeDialog); // Only Qt's own takes a filter of ours.
    dialog.setProxyModel(new ProgramsOnly(&dialog));
    return dialog.choose();
#endif
}

} // namespace wendmark
