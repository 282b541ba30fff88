#pragma once

#include "check/TourCheck.h"
#include "commands/StopListCommands.h"
#include "probe/PageCheck.h"
#include "ui/check/LeftPages.h"

#include <QObject>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace wendmark {

class SettingsStore;
class TourDocument;

/// What is known of the pages of all stops, for as long as the program runs. An answer belongs to an address:
/// a stop that gets another one has none, and has it again when that is undone. The author goes on working
/// while pages are asked for.
class StopCheck final : public QObject {
    Q_OBJECT

public:
    enum class State {
        unknown, ///< Nobody has asked.
        asking,
        known
    };

    struct Row {
        StopToCheck stop;
        State state = State::unknown;
        PageVerdict verdict; ///< When it is known.
        bool isLeft = false; ///< The author knows, and leaves it as it is.
        std::optional<PageVerdict> original =
            std::nullopt; ///< Of the page that a card stands for, when it is known.
        bool asksForOriginal = false;

        /// Whether nobody has asked for the page of the web that it is about.
        bool isUnasked() const {
            return stop.original.empty() ? state == State::unknown : !original && !asksForOriginal;
        }

        /// Whether a card can stand for its page, or take the place of the one that does.
        bool canBeCard() const {
            const bool isKnownToBeThere = state == State::known && verdict.verdict != Verdict::gone;
            return !stop.original.empty() || (stop.asksTheWeb && isKnownToBeThere);
        }

        /// Whether there is an answer of the web's about it that the author can leave as it is.
        bool canBeLeft() const {
            return stop.asksTheWeb && state == State::known && verdict.verdict != Verdict::plays;
        }

        friend bool operator==(const Row&, const Row&) = default;
    };

    /// Both must outlive it.
    StopCheck(const TourDocument& document, SettingsStore& settings, PageCheck::Options options = {},
              QObject* parent = nullptr);
    ~StopCheck() override;

    /// All stops, in their order. Looks at files.
    std::vector<Row> rows() const;

    /// What was found out about the page of the web at this address; none: nothing.
    std::optional<PageVerdict> verdictOn(const std::string& address) const;

    /// Whether the author knows that this is so of the page, and leaves it: nobody need be told.
    bool isLeft(const std::string& address, const PageVerdict& verdict) const;

    /// Remembers, until another answer comes, that the author leaves these stops as they are, or no longer
    /// does. Of stops that play, or that the web is not asked about, there is nothing to remember.
    void setLeft(const StopNumbers& stops, bool left);

    /// Where the tour lies that stops are judged for. Nothing is asked anew: what was found out holds for
    /// all.
    Posting posting() const { return m_posting; }
    void setPosting(Posting posting);

    /// Asks for the pages of these stops, whatever is known of them.
    Outcome check(const StopNumbers& stops);
    Outcome checkAll();

    /// Asks for no further page.
    void cancel();

    bool isRunning() const { return m_check.isRunning(); }
    int asked() const { return m_asked; }    ///< Pages, since the check began.
    int answered() const { return m_found; } ///< Of these.

signals:
    /// Something of all that is other.
    void changed();

    /// No page can be asked for any more.
    void failed(const QString& reason);

private:
    void take(const PageFindings& findings);

    const TourDocument& m_document;
    SettingsStore& m_settings;
    PageCheck m_check;
    LeftPages m_left;
    Posting m_posting;
    std::map<std::string, PageFindings> m_findings; ///< By address.
    std::set<std::string> m_asking;                 ///< Addresses.
    int m_asked = 0;
    int m_found = 0;
};

} // namespace wendmark
