#include "ui/main/Editors.h"

#include "commands/TourDocument.h"
#include "maker.h"
#include "platform/Gate.h"
#include "platform/Strings.h"
#include "platform/Twips.h"
#include "ui/Messages.h"
#include "ui/ProgramParts.h"
#include "ui/check/frmCheck.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/find/frmFind.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/frmBrowser.h"

#include <QShortcut>

namespace wendmark {

Editors::Editors(const ProgramParts& parts, QWidget& window)
    : QObject(&window), m_parts(parts), m_window(window) {}

void Editors::editSite() {
    if (!m_siteEditor.isNull() && !m_siteEditor->isHidden()) {
        m_siteEditor->showStop();
        return;
    }
    const Bounds mainWindowBounds = {twipsFromPixels(m_window.x()), twipsFromPixels(m_window.y()),
                                     twipsFromPixels(m_window.width()), twipsFromPixels(m_window.height())};
    m_siteEditor = new frmBrowser(m_parts, &m_window);
    addKeys(*m_siteEditor, QStringLiteral("site.htm"));
    m_siteEditor->load(mainWindowBounds);
    m_siteEditor->show();
}

void Editors::editNarration() {
    if (m_narrationEditor.isNull()) {
        m_narrationEditor = new frmNarEdit(m_parts, &m_window);
        addKeys(*m_narrationEditor, QStringLiteral("narration.htm"));
        connect(m_narrationEditor, &frmNarEdit::openChanged, this, &Editors::narrationOpenChanged);
    }
    m_narrationEditor->editCurrentStop();
}

void Editors::editNarration(const UnappliedTexts& texts) {
    editNarration();
    m_narrationEditor->takeUnappliedTexts(texts);
}

/// Keys of the main window that authors expect in its editors, too.
void Editors::addKeys(QWidget& editor, const QString& helpPage) {
    new QShortcut(QKeySequence(QKeySequence::Save), &editor, this, &Editors::save);
    new QShortcut(QKeySequence(QKeySequence::HelpContents), &editor, this, [this, helpPage] {
        m_parts.gate.run(
            *this, [this, helpPage] { showHelp(helpPage); }, Gate::Kind::look);
    });
}

void Editors::save() {
    if (!m_narrationEditor.isNull())
        m_narrationEditor->store();
    emit saveWanted();
}

std::optional<UnappliedTexts> Editors::unappliedTexts() const {
    return m_narrationEditor.isNull() ? std::nullopt : m_narrationEditor->unappliedTexts();
}

std::int16_t Editors::stopInNarrationEditor() const {
    return m_narrationEditor.isNull() ? std::int16_t{0} : m_narrationEditor->filledStop();
}

void Editors::tellTarget() {
    if (!m_narrationEditor.isNull())
        m_narrationEditor->tellTarget();
}

void Editors::closeSite() {
    if (!m_siteEditor.isNull() && !m_siteEditor->isHidden())
        m_siteEditor->closeNow();
}

void Editors::close() {
    closeSite();
    if (m_narrationEditor.isNull())
        return;
    // Its fields are those of this tour's instructions.
    m_narrationEditor->hide();
    m_narrationEditor->deleteLater();
    m_narrationEditor.clear();
}

bool Editors::mayDropWords(const QString& question) const {
    return !unappliedTexts() || askYesNo(&m_window, question);
}

bool Editors::mayLeave() const {
    return mayDropWords(tr("The narration editor holds words that were not applied to any stop. Do you want "
                           "to leave the tour without them?"));
}

bool Editors::leave() {
    const bool leaves = mayLeave();
    if (leaves)
        close();
    return leaves;
}

void Editors::findInTour() {
    findWindow().ask();
}

void Editors::findNext() {
    findWindow().findNext();
}

void Editors::checkStops() {
    if (m_check.isNull()) {
        m_check = new frmCheck(m_parts, &m_window);
        addKeys(*m_check, QStringLiteral("check.htm"));
    }
    m_check->ask();
}

frmFind& Editors::findWindow() {
    if (m_find.isNull())
        m_find = new frmFind(
            m_parts, [this] { return stopInNarrationEditor(); }, &m_window);
    return *m_find;
}

void Editors::showHelp(const QString& page) {
    helpViewer().showPage(helpFolder() + QLatin1Char('/') + page);
}

void Editors::showWebSite() {
    helpViewer().showPage(QLatin1String(makerSiteURL));
}

frmHelp& Editors::helpViewer() {
    if (m_help.isNull())
        m_help = new frmHelp(m_parts.browserProfile, helpFolder(), &m_window);
    return *m_help;
}

QString Editors::helpFolder() const {
    return toQString(m_parts.document.workspace().folders().appPath) + QStringLiteral("/Help");
}

} // namespace wendmark
