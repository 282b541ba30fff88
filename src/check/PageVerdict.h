#pragma once

#include "publish/FramingPolicy.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What becomes of the page of a stop where visitors play the tour.
namespace wendmark {

/// The first that applies, in this order.
enum class Verdict {
    noPage,      ///< The stop still shows the page that new stops show.
    fileMissing, ///< Its file is not in the tour.
    gone,        ///< There is no such page, or no such server, or none that can be trusted.
    fails,       ///< The server answers with an error, or not at all.
    download,    ///< Browsers would save it.
    refuses,     ///< Its server does not let it be shown in frames of this tour.
    takesOver,   ///< It leaves its frame and takes the tour's place.
    insecure,    ///< It comes without encryption, and the tour with it.
    moved,       ///< It is shown, but has another address for good.
    slow,        ///< It is shown, but not soon.
    plays
};

/// Name for other programs, for example "takes-over".
std::string_view nameOf(Verdict verdict);

/// Same for people: "Takes over the window".
std::string_view wordsFor(Verdict verdict);

/// What visitors see at such a stop, a sentence.
std::string_view visitorsSee(Verdict verdict);

/// Whether visitors see the page.
bool isShown(Verdict verdict);

/// Where the tour lies that visitors play.
enum class Posting { https, http, disk };

/// Name for other programs, for example "disk".
std::string_view nameOf(Posting posting);

/// None for other names.
std::optional<Posting> postingNamed(std::string_view name);

struct Audience {
    Posting posting = Posting::https;
    std::vector<WebOrigin> sites; ///< Where the tour is started from, as far as it is known.
};

/// Why a request of the program's own has come to nothing.
enum class RequestFailure {
    none,
    noSuchHost,
    noServer,  ///< Nothing takes connections there.
    untrusted, ///< The server cannot prove who it is.
    noAnswer,  ///< Waiting for it has taken too long.
    goesRound, ///< It leads from one address to the next without end.
    other
};

/// What was found out about a page of the web: by showing it in a frame of a page of this computer's, and by
/// a request of the program's own.
struct PageFindings {
    enum class Frame {
        nothing, ///< For as long as it was waited for.
        page,
        error ///< An error page of the browser's.
    };

    std::string address; ///< As the stop has it.
    Frame frame = Frame::nothing;
    WebOrigin framedBy;               ///< Where the page around it came from.
    std::vector<std::string> console; ///< What the browser said when it refused the page.
    bool triedToTakeOver = false;
    bool isDownload = false;
    std::int64_t milliseconds = 0;   ///< Until the frame had got the page.
    std::vector<HttpAnswer> answers; ///< To the program's own request, in their order.
    RequestFailure failure = RequestFailure::none;
};

/// Most milliseconds until a page counts as slow.
inline constexpr std::int64_t slowPage = 8'000;

struct PageVerdict {
    Verdict verdict = Verdict::plays;
    std::string why;                   ///< A sentence; empty when there is nothing to say.
    std::string finalAddress;          ///< Where the page lies in the end.
    std::string newAddress;            ///< Where it lies for good, by its server's word; empty: where it did.
    std::vector<std::string> playsFor; ///< Sites that may show it, where it is not for all.

    friend bool operator==(const PageVerdict&, const PageVerdict&) = default;
};

/// Whether a card, a page that opens the page in a tab of its own, serves visitors better than the frame: it
/// is on the web, but not shown, or late.
bool isWorthACard(Verdict verdict);

/// What the program can do for the stop, in words for other programs: "new-address" where the server names
/// another address for good, "card" where isWorthACard().
std::vector<std::string_view> remediesFor(const PageVerdict& verdict);

/// What the browser has shown and said decides whether a page plays or refuses; what servers answer to the
/// program's own request explains, and tells what this computer cannot show.
PageVerdict judgePage(const PageFindings& findings, const Audience& audience);

} // namespace wendmark
