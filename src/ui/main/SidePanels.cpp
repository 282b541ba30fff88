#include "ui/main/SidePanels.h"

#include "commands/TourDocument.h"
#include "model/StopAddress.h"
#include "platform/Gate.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "ui/main/Editors.h"
#include "ui/main/HeldKeys.h"
#include "ui/site/LocalPage.h"
#include "ui/stops/SideDock.h"
#include "ui/stops/StopListPanel.h"
#include "ui/stops/StopPanel.h"

#include <QMainWindow>

namespace wendmark {

namespace {

// Pixels of a window that has room for them.
constexpr int roomForList = 1200;
constexpr int roomForStop = 1500;

SideDockKind listKind() {
    return {QStringLiteral("stopList"), SidePanels::tr("Stop List"), Qt::LeftDockWidgetArea, roomForList,
            stopListSettings::shown,    stopListSettings::width};
}

SideDockKind stopKind() {
    return {QStringLiteral("stopPanel"), SidePanels::tr("Stop"),  Qt::RightDockWidgetArea, roomForStop,
            stopPanelSettings::shown,    stopPanelSettings::width};
}

} // namespace

SidePanels::SidePanels(const ProgramParts& parts, Editors& editors, QMainWindow& window)
    : QObject(&window)
    , m_parts(parts)
    , m_editors(editors)
    , m_window(window)
    , m_list(new StopListPanel(parts, &window))
    , m_stop(new StopPanel(parts, &window))
    , m_listDock(new SideDock(listKind(), m_list, parts.settings, window))
    , m_stopDock(new SideDock(stopKind(), m_stop, parts.settings, window))
    , m_keys(new HeldKeys(parts.gate, window)) {
    connect(m_listDock, &SideDock::entered, m_list, &StopListPanel::focusList);
    connect(m_stopDock, &SideDock::entered, m_stop, &StopPanel::focusAddress);
    for (const SideDock* const dock : {m_listDock, m_stopDock})
        connect(dock, &SideDock::left, this, &SidePanels::left);
    connect(m_list, &StopListPanel::left, this, &SidePanels::left);
    connect(m_stop, &StopPanel::left, this, &SidePanels::left);
    connect(m_list, &StopListPanel::noticeShown, this, &SidePanels::noticeShown);
    connect(m_stop, &StopPanel::noticeShown, this, &SidePanels::noticeShown);
    connect(m_stop, &StopPanel::pageChanged, this, &SidePanels::pageChanged);
    connect(m_stop, &StopPanel::siteEditorWanted, this, &SidePanels::siteEditorWanted);
    connect(m_stop, &StopPanel::localFileWanted, this,
            [this] { m_parts.gate.run(*this, [this] { takeLocalFile(); }); });
    connect(m_list, &StopListPanel::insertGiven, this, &SidePanels::awaitStop);
    connect(m_list, &StopListPanel::insertEnded, this, &SidePanels::beginStop);
    connect(m_keys, &HeldKeys::given, m_stop, &StopPanel::storeTyped);
    connect(m_keys, &HeldKeys::dropped, this, [this] {
        emit noticeShown(tr("What was typed last is not in the tour: there is no new stop for it."));
    });
    m_stop->setTextsElsewhere([this] { return m_editors.stopInNarrationEditor(); });
    connect(&m_editors, &Editors::narrationOpenChanged, m_stop, &StopPanel::refresh);
}

void SidePanels::toggleList() {
    m_listDock->toggle();
}

void SidePanels::toggleStop() {
    m_stopDock->toggle();
}

void SidePanels::awaitStop() {
    if (m_stopDock->isVisible())
        m_keys->holdForLast([this] { return m_stopBegun; });
}

void SidePanels::beginStop(bool isInserted) {
    m_stopBegun = isInserted && m_stopDock->isVisible();
    if (m_stopBegun)
        m_stop->focusAddress();
}

std::optional<UnappliedTexts> SidePanels::unappliedTexts() const {
    if (std::optional<UnappliedTexts> texts = m_editors.unappliedTexts())
        return texts;
    const std::optional<StopTexts> typed = m_stop->unstoredTexts();
    return typed ? std::optional(UnappliedTexts{typed->title, typed->narration, typed->instruction})
                 : std::nullopt;
}

void SidePanels::takeLocalFile() {
    const std::int16_t stop = m_parts.document.model().currentStop;
    if (stop < 1 || stop > m_parts.document.model().stops.held())
        return;
    const LocalPage page = takeLocalPage(m_parts, m_window);
    emit noticeShown(page.notice);
    if (page.address.isEmpty())
        return;
    m_stop->takePage(stopAddressFor(toUtf8(page.address.toString(QUrl::FullyEncoded))));
}

void SidePanels::store() {
    m_listDock->store();
    m_stopDock->store();
}

} // namespace wendmark
