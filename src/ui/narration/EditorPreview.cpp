#include "ui/narration/EditorPreview.h"

#include "base/Files.h"
#include "commands/TourDocument.h"
#include "platform/Settings.h"
#include "platform/Strings.h"
#include "publish/StopPages.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/NarrationPreview.h"

#include <QPushButton>
#include <QSplitter>
#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr int delay = 300;         // Milliseconds without a key before the preview follows.
constexpr int smallestHeight = 80; // Pixels.

std::string beginningForPreview(const std::string& text) {
    return toUtf8(beginningOf(text, HtmlField::longestEdited));
}

/// What the page of this stop shows of the tour besides the stop's texts. Those of all other stops may be
/// many megabytes.
TourModel modelForPreview(const TourModel& tour, std::int16_t stop) {
    TourModel model;
    model.stops.setCount(std::max(tour.stopCount(), stop));
    model.autoInstruction = tour.autoInstruction;
    model.stopLabel = beginningForPreview(tour.stopLabel);
    model.homeSiteURL = beginningForPreview(tour.homeSiteURL);
    if (stop <= tour.stops.held())
        model.stops.at(stop).stopURL = beginningForPreview(tour.stops.at(stop).stopURL);
    return model;
}

} // namespace

EditorPreview::EditorPreview(ProgramParts parts, QSplitter& panes, Texts texts)
    : QObject(&panes)
    , m_parts(std::move(parts))
    , m_panes(panes)
    , m_texts(std::move(texts))
    , m_button(makeButton("btnPreview", tr("Show &Preview"), panes.window())) {
    m_button->setCheckable(true);
    m_button->setToolTip(tr("How the texts will look in the narration frame"));
    connect(m_button, &QPushButton::toggled, this, &EditorPreview::show);
    connect(m_button, &QPushButton::clicked, this,
            [this](bool shown) { m_parts.settings.store(narrationSettings::previewShown, shown); });
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &EditorPreview::refresh);
}

void EditorPreview::restore() {
    const bool shown = m_parts.settings.read(narrationSettings::previewShown);
    m_button->setChecked(shown);
}

void EditorPreview::show(bool shown) {
    m_button->setText(shown ? tr("Hide &Preview") : tr("Show &Preview"));
    if (shown && m_preview == nullptr) {
        const QString folder = toQString(m_parts.document.workspace().folders().newTourPath);
        m_preview = new NarrationPreview(m_parts.browserProfile, folder, &m_panes);
        m_preview->setMinimumHeight(smallestHeight);
        m_panes.addWidget(m_preview);
        m_panes.setStretchFactor(m_panes.indexOf(m_preview), 2);
        emit made();
    }
    if (m_preview != nullptr)
        m_preview->setVisible(shown);
    emit folded();
    refresh();
}

void EditorPreview::refresh() {
    if (m_preview == nullptr || m_preview->isHidden() || !m_panes.isVisible())
        return;
    const files::Contents source = files::read(m_parts.document.workspace().templateFile("page.htm"));
    if (!source.outcome.ok())
        return;
    const TourModel& tour = m_parts.document.model();
    const std::int16_t stop = std::clamp<std::int16_t>(tour.currentStop, 1, tourCapacity);
    TourModel model = modelForPreview(tour, stop);
    std::string address = std::move(model.stops.at(stop).stopURL);
    model.stops.at(stop) = m_texts();
    model.stops.at(stop).stopURL = std::move(address);
    m_preview->showPage(QByteArray::fromStdString(composeStopPage(source.bytes, std::move(model), stop)));
}

} // namespace wendmark
