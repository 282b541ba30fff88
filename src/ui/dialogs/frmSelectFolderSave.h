#pragma once

#include <QDialog>

class QLineEdit;

namespace wendmark {

class FolderPicker;
struct WorkspaceFolders;

/// Picks where a tour is saved under another name, and makes its folder.
class frmSelectFolderSave final : public QDialog {
    Q_OBJECT

public:
    /// `folders` must outlive the dialog.
    explicit frmSelectFolderSave(const WorkspaceFolders& folders, QWidget* parent = nullptr);

    /// The new folder was made.
    bool folderChosen() const { return m_folderChosen; }
    QString folder() const { return m_folder; }

    /// The folder that could not be had last, when the dialog was left without one; else empty.
    QString refusedFolder() const { return m_folderChosen ? QString() : m_folder; }

private:
    void choose();

    const WorkspaceFolders& m_folders;
    FolderPicker* m_picker;
    QLineEdit* m_tourName;
    QString m_folder; ///< Tried last.
    bool m_folderChosen = false;
};

} // namespace wendmark
