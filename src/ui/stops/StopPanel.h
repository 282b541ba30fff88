#pragma once

#include "commands/DocumentListener.h"
#include "commands/StopCommands.h"
#include "commands/StopEdit.h"
#include "model/StopList.h"
#include "ui/ProgramParts.h"

#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class QPushButton;

namespace wendmark {

class HtmlField;
class TitleOffer;

/// The current stop's page, title, words and instruction beside the preview. What is typed is in the tour at
/// once, or as soon as the command under way has ended; a burst of typing is one step of the history.
class StopPanel final : public QWidget, private DocumentListener {
    Q_OBJECT

public:
    /// What `parts` refers to must outlive the panel.
    explicit StopPanel(const ProgramParts& parts, QWidget* parent = nullptr);
    ~StopPanel() override;

    /// Puts the focus into the address, all of it selected: for a stop that is new.
    void focusAddress();

    /// Asked for the number of the stop whose texts another window has; 0: none has.
    void setTextsElsewhere(std::function<std::int16_t()> stop) { m_textsElsewhere = std::move(stop); }

    /// Brings the fields up to date soon.
    void refresh() { m_changes.start(0); }

    /// Within a command: what was just typed is in the tour before the next command.
    void storeTyped();

    /// Makes this the page of the stop on screen, and shows it.
    void takePage(const std::string& address);

    /// What was typed and has to wait for a command to end.
    std::optional<StopTexts> unstoredTexts() const;

    /// The least that shows all of the fields.
    int heightForWidth(int width) const override;

signals:
    /// The author wants to choose the page in the site editor, or a file.
    void siteEditorWanted();
    void localFileWanted();

    /// The page of the stop on screen is another one.
    void pageChanged();

    /// What the author should know of what was just typed; empty: nothing.
    void noticeShown(const QString& text);

    /// The author wants to be back in the preview.
    void left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// What was typed into the fields of a stop and is not in the tour yet.
    struct Typed {
        std::int16_t stop = 0;
        Stop before; ///< The stop as it was.
        Stop after;
        StopFields fields; ///< That were typed into.
        bool stored = false;
    };

    void setupFields();
    void setupLayout();
    void type(const StopFields& fields);
    void store(const std::shared_ptr<Typed>& typed);
    void leaveAddress();
    void offerTitle();
    void takeTitle(const QString& title);
    Stop present() const;
    void fill();
    StopFields changedFields(const Stop& stop, bool otherMode) const;
    void forgetFormerStop();
    void fillFields(const Stop& stop, const StopFields& fields);
    void enableFields();
    void tellTarget();
    bool holdsStop() const;
    bool isElsewhere() const;

    void tourChangedNow() override { refresh(); }
    void currentStopChanged() override { refresh(); }

    ProgramParts m_parts;
    QLabel* m_target; ///< Which stop the fields are of, and why some cannot be changed.
    // In their order on screen, which assistive tools tell.
    QLineEdit* m_address;
    QLabel* m_addressHint; ///< Why what is typed is no page.
    QLineEdit* m_title;
    TitleOffer* m_titleOffer; ///< The page's own title.
    HtmlField* m_words;
    HtmlField* m_instruction;
    QPushButton* m_siteButton;
    QPushButton* m_fileButton;
    std::function<std::int16_t()> m_textsElsewhere;
    std::int16_t m_stop = -1;       ///< Whose fields these are; 0: the opening page, -1: nobody's yet.
    Stop m_seen;                    ///< That stop in the tour, when the fields were last brought up to date.
    std::string m_shownPage;        ///< Its page that the preview was sent to.
    std::shared_ptr<Typed> m_typed; ///< Waits for its turn.
    std::uint64_t m_burst = 1;      ///< Of typing.
    QTimer m_pause;                 ///< Runs out when a burst has ended.
    QTimer m_changes;               ///< Runs while the fields have not caught up with the document.
    bool m_automatic = false;       ///< The program writes the instructions.
    bool m_filling = false;         ///< The fields change, and nobody types.
};

} // namespace wendmark
