#pragma once

#include "recovery/RecoveryRecord.h"

#include <QObject>
#include <QPointer>
#include <cstdint>
#include <optional>

class QWidget;

namespace wendmark {

class frmBrowser;
class frmCheck;
class frmFind;
class frmHelp;
class frmNarEdit;
struct ProgramParts;

/// The windows that stay open beside the main window: site editor, narration editor, find window, help
/// viewer.
class Editors final : public QObject {
    Q_OBJECT

public:
    /// Both must outlive it.
    Editors(const ProgramParts& parts, QWidget& window);

    /// Opens the site editor, or brings it to the front, with the page of the current stop, which must not be
    /// the opening page.
    void editSite();

    /// Same for the narration editor and the current stop's words.
    void editNarration();

    /// Same with words that a former run did not apply.
    void editNarration(const UnappliedTexts& texts);

    /// Words that stand in the narration editor and in no stop.
    std::optional<UnappliedTexts> unappliedTexts() const;

    /// Says in the narration editor which stop its words go to.
    void tellTarget();

    /// The tour's files go: closes the site editor, whose lists are among them.
    void closeSite();

    /// Another tour comes: closes both editors. The author was asked about unapplied words before.
    void close();

    /// Asks about words that were not applied, if there are any; false: the author wants to keep them.
    bool mayDropWords(const QString& question) const;

    /// Same when another tour is to come.
    bool mayLeave() const;

    /// Same, and closes both editors when the author goes.
    bool leave();

    /// Asks for words to find in all stops.
    void findInTour();

    /// Goes to the next place where they stand.
    void findNext();

    /// Asks whether the pages of all stops play.
    void checkStops();

    /// Shows the help pages, or the maker's web site.
    void showHelp(const QString& page = QStringLiteral("index.htm"));
    void showWebSite();

    /// Number of the stop whose texts the narration editor has; 0: none.
    std::int16_t stopInNarrationEditor() const;

signals:
    /// The narration editor is open, or closed.
    void narrationOpenChanged();

    /// The author gives Save in an editor; what is in its fields is in the tour.
    void saveWanted();

private:
    void addKeys(QWidget& editor, const QString& helpPage);
    void save();
    frmFind& findWindow();
    frmHelp& helpViewer();
    QString helpFolder() const;

    const ProgramParts& m_parts;
    QWidget& m_window;
    QPointer<frmFind> m_find;   ///< None until its first use.
    QPointer<frmCheck> m_check; ///< None until its first use.
    QPointer<frmHelp> m_help;
    QPointer<frmBrowser> m_siteEditor;      ///< None while it is closed.
    QPointer<frmNarEdit> m_narrationEditor; ///< None until its first use, and after its close box.
};

} // namespace wendmark
