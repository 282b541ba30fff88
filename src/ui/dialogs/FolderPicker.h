#pragma once

#include <QPersistentModelIndex>
#include <QString>
#include <QWidget>

class QComboBox;
class QLabel;
class QTreeView;

namespace wendmark {

class TourFolderModel;
struct WorkspaceFolders;

/// Drives, the folder tree of the chosen one, and the path of the folder selected in it. Where the system has
/// no drives, the user's home, the root and the mounted volumes take their place. Folders that are tours are
/// marked and show their titles.
class FolderPicker final : public QWidget {
    Q_OBJECT

public:
    explicit FolderPicker(const QString& driveCaption, QWidget* parent = nullptr);

    /// Selects the folder of the author's tours. Template and NewTour, which are none, stay unmarked.
    void startIn(const WorkspaceFolders& folders);

    /// Selects a folder, in the drive that holds it, and keeps it, with what it holds, in sight while folders
    /// are being listed, until the author takes the tree with the mouse. A folder that does not exist leaves
    /// the selection.
    void setFolder(const QString& path);

    /// Gives the folder tree the keyboard.
    void focusFolders();

    /// The selected folder, without a separator at its end unless it is a root.
    QString folder() const;

    /// Lists folders that have just been made, too.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void folderChanged(const QString& path);

    /// The tree itself is still to take its new size in.
    void treeResized();

private:
    void nameControls();
    void fillDrives();
    void goToDrive(int index);
    void showSelection();
    void keepInSight();
    int driveHolding(const QString& path) const;

    QComboBox* m_drives;
    QTreeView* m_tree;
    QLabel* m_path;
    TourFolderModel* m_model;
    QPersistentModelIndex m_shown; ///< What was set last.
    bool m_keepsInSight = false;
};

} // namespace wendmark
