#pragma once

#include "model/StopList.h"
#include "recovery/RecoveryRecord.h"
#include "ui/ProgramParts.h"

#include <QDialog>
#include <optional>

class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QSplitter;

namespace wendmark {

class EditorPreview;
class HtmlField;
class PictureRow;
class TagButtons;
struct StopTexts;

/// Edits the title, the narration and the instruction of a stop. Not modal: what Apply stores goes into the
/// stop that is current then. Apply and Cancel hide the window, its close box destroys it.
class frmNarEdit final : public QDialog {
    Q_OBJECT

public:
    /// What `parts` refers to must outlive the window.
    explicit frmNarEdit(const ProgramParts& parts, QWidget* parent = nullptr);
    ~frmNarEdit() override;

    /// Fills the fields from the current stop, which must not be the opening page, and comes to the front.
    /// The instruction is left alone in a tour whose instructions the program writes.
    void editCurrentStop();

    /// What the fields hold when it is not what the stop gave them; none while the window is closed.
    std::optional<UnappliedTexts> unappliedTexts() const;

    /// Puts texts into the fields that were not applied in a former run.
    void takeUnappliedTexts(const UnappliedTexts& texts);

    /// Number of the stop whose texts the fields were filled with; 0 while the window is closed.
    std::int16_t filledStop() const;

    /// Stores what Apply would, and stays open.
    void store();

    /// Says which stop Apply stores into now.
    void tellTarget();

    /// Esc and "Cancel": hides the window, stores nothing.
    void reject() override;

signals:
    /// The window has the texts of a stop, or no longer.
    void openChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void setupFields();
    void setupModeBar();
    QLayout* makeTitleRow();
    QWidget* makeInstructionPart();
    QLayout* makeBottomRow();
    void setTitle(const std::string& title);
    std::string title() const;
    void setupShortcuts();
    void load();
    void limitSize();
    void storeSize();

    UnappliedTexts texts() const;

    void apply();
    bool storeTexts();
    std::string instructionFor(std::int16_t stop) const;
    bool mayStoreInto(std::int16_t stop);
    void showStored(const StopTexts& texts);
    void fillInstruction(const Stop& stop);
    bool isOtherMode() const;
    void reloadInstruction();
    Stop shownTexts() const;
    void remember(std::int16_t stop);

    ProgramParts m_parts;
    UnappliedTexts m_loaded;       ///< The fields as the stop filled them.
    Stop m_filledWith;             ///< That stop, as it was then.
    std::int16_t m_filledStop = 0; ///< Its number then.
    QLineEdit* m_title;            ///< txtStopTitle
    std::string m_givenTitle;      ///< What the stop filled it with.
    HtmlField* m_narration;        ///< txtText
    HtmlField* m_instruction;      ///< txtMoreText
    TagButtons* m_tags;
    QLabel* m_target; ///< Which stop Apply stores into.
    QSplitter* m_panes;
    PictureRow* m_picture;
    QWidget* m_modeBar; ///< Says that the instruction has come under another rule.
    QLabel* m_modeLabel;
    EditorPreview* m_preview;
    bool m_closing = false; ///< By the close box, and no command is under way any more.
};

} // namespace wendmark
