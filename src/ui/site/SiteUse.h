#pragma once

#include <QObject>
#include <cstdint>
#include <string>

class QUrl;
class QWidget;

namespace wendmark {

class BrowserView;
class SiteTest;
class TourDocument;
struct ProgramParts;

/// "Use this Site": tests the page that is shown, asks, and makes it the page of a stop.
class SiteUse final : public QObject {
    Q_OBJECT

public:
    /// All must outlive it; questions stand over `window`.
    SiteUse(const ProgramParts& parts, BrowserView& browser, SiteTest& test, QWidget& window);

    /// Stores into the stop that is current now, whichever the author turns to during the test.
    void run();

    /// Address that the author has accepted last; empty: none.
    const std::string& siteEditResult() const { return m_siteEditResult; }
    void clearResult() { m_siteEditResult.clear(); }

signals:
    /// The browser is to go back to this page.
    void pageWanted(const QUrl& page);
    void noticeWanted(const QString& text);

    /// The page is that of this stop now.
    void stored(int stop);

    /// The page was stored, or there was nothing to store.
    void ended();

private:
    bool mayUse(const QUrl& page);
    bool store(std::int16_t stop);
    bool mayReplace(const std::string& oldAddress, const QUrl& page);
    void tellWhatVisitorsMiss();
    std::string location() const;

    const ProgramParts& m_parts;
    TourDocument& m_document;
    BrowserView& m_browser;
    SiteTest& m_test;
    QWidget& m_window;
    std::string m_siteEditResult;
};

} // namespace wendmark
