#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

class QWebEngineProfile;
class QWebEngineView;
class QWidget;

namespace wendmark {

class BrowserPage;

/// What a page of the web looks like in a browser's window of its own, and what it says of itself. The page
/// gets no files, asks nobody anything, is not to be seen, and is gone at the end.
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

    /// Begins at once. The profile must outlive it. The page is shown in `window`, which must be there until
    /// done(), beyond its edges: windows of its own, which Qt shows of pages whatever it is told, would come
    /// over the author's and take the keys.
    PagePicture(QWebEngineProfile& profile, const QUrl& address, QWidget& window, Patience patience,
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

    QPointer<QWebEngineView> m_view; ///< Of the window, which may be gone before.
    BrowserPage* m_page;
    Patience m_patience;
    Portrait m_portrait;
    QTimer m_limit;
    bool m_isTaken = false;
    bool m_isFinished = false;
};

} // namespace wendmark
