#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace wendmark {

/// What the site editor has to say of a page, in a bar over the lower edge of the page, so that nothing moves
/// when it comes and goes. It may offer to search the web.
class NoticeBar final : public QFrame {
    Q_OBJECT

public:
    /// Lies over `page`, which is in `window`.
    NoticeBar(QWidget& page, QWidget& window);

    /// An empty text hides the bar. `ofLoading`: it is about a load, and untrue as soon as the next one
    /// begins. `offersSearch`: with a button that searches the web.
    void showText(const QString& text, bool ofLoading = false, bool offersSearch = false);

    /// The next load begins.
    void endLoadNotice();
    QString text() const;

signals:
    void searchWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takePlace();

    QWidget& m_page;
    bool m_ofLoading = false;
    QLabel* m_text;       ///< lblNotice
    QPushButton* m_offer; ///< btnNotice
    QPushButton* m_close; ///< btnCloseNotice
};

} // namespace wendmark
