#pragma once

#include "commands/CardFiles.h"
#include "probe/PagePicture.h"

#include <QObject>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QWebEngineProfile;
class QWidget;

namespace wendmark {

/// Looks at pages of the web, one after the other, for the cards that are to stand for them. Nothing is
/// waited for: the author goes on working.
class CardMaker final : public QObject {
    Q_OBJECT

public:
    struct Request {
        std::int16_t stop = 0; ///< From 1.
        std::string address;   ///< What the stop shows, by which it is known again.
        std::string original;  ///< Page of the web that the card stands for.
        std::string stopTitle; ///< Plain text, for pages that do not come.
        std::string former;    ///< Name of the card that is made anew; empty: there is none.
    };

    struct Result {
        Request request;
        CardFiles::Content content;
    };

    /// The pages are shown in `window`, where they are not to be seen; one that shows others already is best,
    /// since Qt makes a window anew for the first one. It must outlive the object.
    explicit CardMaker(QWidget& window, QObject* parent = nullptr);
    ~CardMaker() override;

    /// Begins with these; nothing while others are under way.
    void start(std::vector<Request> requests);

    /// Forgets them.
    void cancel();

    bool isRunning() const { return m_done < m_requests.size(); }
    std::size_t wanted() const { return m_requests.size(); }
    std::size_t done() const { return m_done; }

    /// Complete after ended(); in the order of the requests.
    const std::vector<Result>& results() const { return m_results; }

signals:
    void changed();
    void ended();

private:
    void lookAtNext();
    void take();
    void release();

    QWidget& m_window;
    std::unique_ptr<QWebEngineProfile> m_profile; ///< While it runs.
    std::unique_ptr<PagePicture> m_picture;
    std::vector<Request> m_requests;
    std::vector<Result> m_results;
    std::size_t m_done = 0;
};

} // namespace wendmark
