#include "ui/stops/TitleOffer.h"

#include "model/FoundLinks.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/stops/PageTitle.h"

#include <QUrl>

namespace wendmark {

namespace {

constexpr qsizetype longestShown = 40; // Characters of a title on the button.

} // namespace

TitleOffer::TitleOffer(QWebEngineProfile& profile, const QString& folder, QWidget* parent)
    : QPushButton(parent), m_pageTitle(new PageTitle(profile, folder, this)) {
    setObjectName(QStringLiteral("btnPanelTitle"));
    setToolTip(tr("Makes the page's own title that of the stop"));
    hide();
    connect(m_pageTitle, &PageTitle::found, this,
            [this](const QUrl&, const QString& title) { offer(title); });
    // By its key, a click comes a moment later: what is typed in between would go into another field.
    connect(this, &QPushButton::pressed, this, [this] { emit taken(m_title); });
}

void TitleOffer::ask(const QUrl& page) {
    withdraw();
    m_pageTitle->ask(page);
}

void TitleOffer::withdraw() {
    hide();
    m_pageTitle->cancel();
}

void TitleOffer::offer(const QString& title) {
    m_title = title.left(static_cast<qsizetype>(longestFoundTitle));
    setText(tr("&Use \"%1\"")
                .arg(shortened(m_title, longestShown).replace(QLatin1Char('&'), QStringLiteral("&&"))));
    show();
}

} // namespace wendmark
