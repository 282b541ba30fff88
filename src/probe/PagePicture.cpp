#include "probe/PagePicture.h"

#include "platform/BrowserPage.h"

#include <QPointer>
#include <QVariantList>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineView>
#include <QWidget>
#include <utility>

namespace wendmark {

namespace {

constexpr QSize pictureSize(1280, 800); // Pixels.

constexpr int longestWait = 5'000; // Milliseconds for the page's words.

/// Bounded where they are read: a page may say as much as it likes.
const QString wordsOfPage = QStringLiteral(
    "(() => {"
    "  const said = (...names) => names.map((name) => document.querySelector("
    "    `meta[name=\"${name}\"], meta[property=\"${name}\"]`)?.content).find((text) => text) || '';"
    "  return [document.title, said('og:site_name'), said('description', 'og:description')]"
    "    .map((text) => String(text).slice(0, 1000));"
    "})()");

} // namespace

PagePicture::PagePicture(QWebEngineProfile& profile, const QUrl& address, QWidget& window, Patience patience,
                         QObject* parent)
    : QObject(parent)
    , m_view(new QWebEngineView(&window))
    , m_page(new BrowserPage(profile, m_view))
    , m_patience(patience) {
    m_page->setUnattended();
    m_view->setPage(m_page);
    m_view->setEnabled(false); // So that it gets no keys.
    m_view->setFixedSize(pictureSize);
    m_view->move(-2 * pictureSize.width(), 0);
    m_limit.setSingleShot(true);
    m_limit.callOnTimeout(this, &PagePicture::take);
    connect(m_page, &QWebEnginePage::loadFinished, this, [this](bool loaded) {
        if (loaded)
            m_limit.start(m_patience.rest);
        else
            finish();
    });
    connect(m_page, &BrowserPage::downloadRefused, this, &PagePicture::finish);
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this, &PagePicture::finish);
    m_limit.start(m_patience.page);
    m_view->show();
    m_page->setUrl(address);
}

PagePicture::~PagePicture() {
    delete m_view;
}

/// A page that is slow to end is taken as far as it has come.
void PagePicture::take() {
    if (m_view == nullptr || std::exchange(m_isTaken, true)) {
        finish(); // It does not say what it is called.
        return;
    }
    m_portrait.picture =
        m_view->grab().toImage().scaled(pictureSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_limit.start(longestWait);
    m_page->runJavaScript(wordsOfPage, QWebEngineScript::ApplicationWorld,
                          [guard = QPointer(this)](const QVariant& words) {
                              if (guard != nullptr)
                                  guard->takeWords(words);
                          });
}

void PagePicture::takeWords(const QVariant& words) {
    const QVariantList texts = words.toList();
    if (texts.size() == 3) {
        m_portrait.title = texts.at(0).toString().simplified();
        m_portrait.site = texts.at(1).toString().simplified();
        m_portrait.description = texts.at(2).toString().simplified();
    }
    finish();
}

void PagePicture::finish() {
    if (std::exchange(m_isFinished, true))
        return;
    m_limit.stop();
    if (m_view != nullptr)
        m_page->triggerAction(QWebEnginePage::Stop);
    emit done();
}

} // namespace wendmark
