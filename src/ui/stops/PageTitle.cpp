#include "ui/stops/PageTitle.h"

#include "platform/BrowserPage.h"

#include <QWebEngineSettings>
#include <utility>

namespace wendmark {

namespace {

constexpr int patience = 20'000; // Milliseconds.

/// For a page without a title, engines tell its address.
bool isTitle(const QString& text, const QUrl& address) {
    const QString shown = address.toString();
    const auto isEndOf = [&](QChar separator) { return shown.endsWith(separator + text); };
    return !text.isEmpty() && text != shown && text != address.host() && !isEndOf(QLatin1Char('/'));
}

} // namespace

PageTitle::PageTitle(QWebEngineProfile& profile, QString folder, QObject* parent)
    : QObject(parent), m_profile(profile), m_folder(std::move(folder)) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    m_patience.callOnTimeout(this, &PageTitle::cancel);
}

PageTitle::~PageTitle() {
    delete m_page;
}

void PageTitle::ask(const QUrl& address) {
    cancel();
    m_page = new BrowserPage(m_profile, this);
    m_page->setAudioMuted(true);
    for (const auto attribute :
         {QWebEngineSettings::JavascriptEnabled, QWebEngineSettings::AutoLoadImages,
          QWebEngineSettings::ErrorPageEnabled, QWebEngineSettings::FocusOnNavigationEnabled})
        m_page->settings()->setAttribute(attribute, false);
    m_page->confinement().setAllowedFolders({m_folder}, {});
    connect(m_page, &QWebEnginePage::titleChanged, this, [this, address](const QString& text) {
        const QString title = text.simplified();
        if (!isTitle(title, address))
            return;
        cancel();
        emit found(address, title);
    });
    connect(m_page, &QWebEnginePage::loadFinished, this, &PageTitle::cancel);
    m_patience.start();
    m_page->load(address);
}

void PageTitle::cancel() {
    m_patience.stop();
    if (m_page.isNull())
        return;
    m_page->disconnect(this);
    m_page->deleteLater();
    m_page.clear();
}

} // namespace wendmark
