#pragma once

#include <QImage>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <memory>

class QWebEngineProfile;
class QWebEngineView;

namespace wendmark {

class BrowserPage;

/// What a page of the web looks like in a browser's window of its own, and what it says of itself. Shown in a
/// window that is never on screen. The page gets no files, asks nobody anything, and is gone at the end.
class PagePicture final : public QObject {
    Q_OBJECT

public:
    /// What is waited for, in milliseconds.
    struct Patience {
        int page = 30'000; ///< For the page to come.
        int rest = 1'500;  ///< Further: pictures come late, and banners move in.
    };

    /// What was found out. Texts are the page's own, of any length; everything is empty of a page that does
    /// not come.
    struct Portrait {
        QImage picture; ///< 1280 by 800 pixels, whatever the screen has.
        QString title;
        QString site;
        QString description;
    };

    /// Begins at once. The profile must outlive it.
    PagePicture(QWebEngineProfile& profile, const QUrl& address, Patience patience,
                QObject* parent = nullptr);
    ~PagePicture() override;

    /// Complete after done().
    const Portrait& portrait() const { return m_portrait; }

signals:
    /// Once.
    void done();

private:
    void take();
    void takeWords(const QVariant& words);
    void finish();

    std::unique_ptr<QWebEngineView> m_view;
    BrowserPage* m_page;
    Patience m_patience;
    Portrait m_portrait;
    QTimer m_limit;
    bool m_isTaken = false;
    bool m_isFinished = false;
};

} // namespace wendmark
