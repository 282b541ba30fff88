#pragma once

#include "base/Outcome.h"
#include "check_tour/CheckedTour.h"
#include "probe/PageCheck.h"

#include <QEventLoop>
#include <QObject>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace wendmark::cli {

/// Asks for the pages of all tours, each once, and puts the verdicts into their stops.
class PageInquiry final : public QObject {
    Q_OBJECT

public:
    /// The tours must outlive it. How far it is goes to `progress`, one line that is written over; null: to
    /// nobody.
    PageInquiry(std::vector<CheckedTour>& tours, PageCheck::Options options, std::ostream* progress);

    /// Handles events until all is known. A failure: no page can be asked for.
    Outcome run();

    /// Makes run() return, or not begin. Its outcome says nothing then.
    void interrupt();

private:
    using Stop = std::pair<const CheckedTour*, StopToCheck*>;

    Outcome askForAll();
    void take(const PageFindings& findings);
    void tellProgress();
    void clearProgress();

    std::map<std::string, std::vector<Stop>> m_waiting; ///< By page; gone when it is known.
    std::size_t m_answered = 0;                         ///< Pages.
    PageCheck m_check;
    std::ostream* m_progress;
    QEventLoop m_loop;
    Outcome m_outcome = Outcome::success();
    bool m_isInterrupted = false;
};

} // namespace wendmark::cli
