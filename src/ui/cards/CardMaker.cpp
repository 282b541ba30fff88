#include "ui/cards/CardMaker.h"

#include "model/StopAddress.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"

#include <QBuffer>
#include <QPointer>
#include <QWebEngineProfile>
#include <utility>

namespace wendmark {

namespace {

constexpr int quality = 85;
constexpr qsizetype longestTitle = 200;       // UTF-16 units.
constexpr qsizetype longestDescription = 400; // UTF-16 units.

std::string jpegOf(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return picture.save(&buffer, "JPEG", quality) ? bytes.toStdString() : std::string();
}

/// Ends with a whole word where that is near.
QString cut(const QString& text, qsizetype longest) {
    if (text.size() <= longest)
        return text;
    const qsizetype blank = text.lastIndexOf(QLatin1Char(' '), longest);
    return text.left(blank > longest / 2 ? blank : longest) + QChar(0x2026);
}

CardFiles::Content contentOf(const CardMaker::Request& request, const PagePicture::Portrait& portrait) {
    CardFiles::Content content;
    PageCard& card = content.card;
    const std::string host = hostOf(request.original);
    card.original = request.original;
    card.title = portrait.title.isEmpty() ? request.stopTitle : toUtf8(cut(portrait.title, longestTitle));
    card.site = portrait.site.isEmpty() ? host : toUtf8(cut(portrait.site, longestTitle)) + ", " + host;
    card.description = toUtf8(cut(portrait.description, longestDescription));
    if (portrait.picture.isNull())
        return content;
    const QImage small =
        portrait.picture.scaled(portrait.picture.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    card.width = small.width();
    card.height = small.height();
    content.picture = jpegOf(small);
    content.largePicture = content.picture.empty() ? std::string() : jpegOf(portrait.picture);
    return content;
}

} // namespace

CardMaker::CardMaker(QWidget& window, QObject* parent) : QObject(parent), m_window(window) {}

CardMaker::~CardMaker() = default;

void CardMaker::start(std::vector<Request> requests) {
    if (isRunning() || requests.empty())
        return;
    m_requests = std::move(requests);
    m_results.clear();
    m_done = 0;
    m_profile.reset(makeBrowserProfile(nullptr));
    lookAtNext();
    emit changed();
}

void CardMaker::cancel() {
    m_requests.clear();
    m_results.clear();
    m_done = 0;
    release();
    emit changed();
}

void CardMaker::lookAtNext() {
    const QUrl address(toQString(m_requests.at(m_done).original));
    m_picture = std::make_unique<PagePicture>(*m_profile, address, m_window, PagePicture::Patience());
    // Queued: what the engine is in the middle of must not be deleted.
    connect(
        m_picture.get(), &PagePicture::done, this,
        [this, picture = QPointer(m_picture.get())] {
            if (picture != nullptr && picture == m_picture.get())
                take();
        },
        Qt::QueuedConnection);
}

void CardMaker::take() {
    const Request& request = m_requests.at(m_done);
    m_results.push_back({request, contentOf(request, m_picture->portrait())});
    ++m_done;
    if (isRunning()) {
        lookAtNext();
        emit changed();
        return;
    }
    release();
    emit changed();
    emit ended();
}

/// The pages before their profile.
void CardMaker::release() {
    m_picture.reset();
    m_profile.reset();
}

} // namespace wendmark
