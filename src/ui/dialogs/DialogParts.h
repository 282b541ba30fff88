#pragma once

#include <QString>

class QDialog;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

/// Pieces that the small dialogs have in common.
namespace wendmark {

struct WorkspaceFolders;

/// Pixels between the parts of a dialog.
inline constexpr int dialogGap = 8;

/// The layout of a whole dialog: its parts below one another, with the usual margins and gaps.
QVBoxLayout* makeDialogLayout(QDialog& dialog);

/// A label with wrapped plain text.
QLabel* makeTextLabel(const char* name, const QString& text, QWidget* parent);

QPushButton* makeButton(const char* name, const QString& caption, QWidget* parent);

/// The first `longest` UTF-16 units of a text, an ellipsis behind them where there are more. Labels and lists
/// that show all of some megabytes keep their window from answering.
QString shortened(const QString& text, qsizetype longest);

/// The field's text, which began as `given`: where that is longer than the field can hold, all of it until
/// the author changes it.
std::string wholeText(const QLineEdit& field, const std::string& given);

/// OKButton, which is the default one, and CancelButton.
QDialogButtonBox* makeOkCancelButtons(QWidget* parent);

/// The buttons of a dialog that selects a tour's folder, btnOK being the default one.
QDialogButtonBox* makeSelectionButtons(QWidget* parent);

/// Shows the dialog modally in the middle of the screen, until it is left.
void runDialog(QDialog& dialog);

/// Makes a dialog that is on screen large enough for texts that have changed.
void makeRoomForTexts(QDialog& dialog);

/// Whether `path` is no folder of the program's own, such as Template, in which no tour is kept. Else the
/// author is told why it is not opened.
bool mayOpenTourIn(const QString& path, const WorkspaceFolders& folders, QWidget* parent);

/// Same for whether the folder holds a tour; else the author is told that it does not.
bool holdsTourToOpen(const QString& folder, QWidget* parent);

/// Folder of the sample tour; empty when it is not there.
QString sampleTourIn(const WorkspaceFolders& folders);

/// Creates the folder `path` for a tour. False when it cannot be made, mostly because it exists.
bool createTourFolder(const QString& path);

} // namespace wendmark
