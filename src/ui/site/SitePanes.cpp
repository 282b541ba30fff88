#include "ui/site/SitePanes.h"

#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "platform/Twips.h"
#include "ui/dialogs/DialogParts.h"

#include <QScrollArea>
#include <algorithm>
#include <utility>

namespace wendmark {

namespace {

constexpr int usualShare = 35; ///< Of the height, to the bookmarks, in per cent.

// Pixels.
constexpr int smallestPage = 96;
constexpr int smallestBookmarks = 72;

} // namespace

SitePanes::SitePanes(QWidget* parent) : QSplitter(Qt::Vertical, parent), m_bookmarks(new QScrollArea) {
    setObjectName(QStringLiteral("splitter"));
    setChildrenCollapsible(false);
    setHandleWidth(dialogGap);
    m_bookmarks->setWidgetResizable(true);
    m_bookmarks->setFrameShape(QFrame::NoFrame);
    m_bookmarks->setFocusPolicy(Qt::NoFocus);
    m_bookmarks->setMinimumHeight(smallestBookmarks);
    connect(this, &QSplitter::splitterMoved, this, [this] { m_dragged = true; });
}

void SitePanes::setPanes(QWidget* page, QWidget* bookmarks, const SettingsStore& settings) {
    page->setMinimumHeight(smallestPage);
    addWidget(page);
    addWidget(m_bookmarks);
    m_bookmarks->setWidget(bookmarks);
    setStretchFactor(0, 1);
    setStretchFactor(1, 0);
    m_wanted = pixelsFromTwips(settings.read(siteSettings::bookmarksHeight));
}

void SitePanes::store(SettingsStore& settings) const {
    if (m_dragged)
        settings.store(siteSettings::bookmarksHeight, twipsFromPixels(m_bookmarks->height()));
}

/// Its height is known now, and not before.
void SitePanes::showEvent(QShowEvent* event) {
    QSplitter::showEvent(event);
    if (std::exchange(m_placed, true))
        return;
    const int whole = height() - handleWidth();
    const int wanted = m_wanted > 0 ? m_wanted : whole * usualShare / 100;
    const int most = std::max(whole - smallestPage, smallestBookmarks);
    const int bookmarks = std::clamp(wanted, smallestBookmarks, most);
    setSizes({whole - bookmarks, bookmarks});
}

} // namespace wendmark
