#include "check/PageVerdict.h"

#include "model/StopAddress.h"

#include <algorithm>
#include <array>

namespace wendmark {

namespace {

enum Status { unauthorized = 401, notFound = 404, gone = 410, tooManyRequests = 429, firstError = 400 };

struct VerdictText {
    std::string_view name;
    std::string_view words;
    std::string_view seen;
};

/// In the order of the verdicts.
constexpr std::array<VerdictText, 11> texts = {{
    {"no-page", "No page yet", "Visitors see the page of new stops."},
    {"file-missing", "File missing", "Visitors see an error of their browser."},
    {"gone", "Gone", "Visitors see an error in place of the page."},
    {"fails", "Fails", "Visitors see an error in place of the page."},
    {"download", "Download", "The file is saved on the visitor's computer, or nothing happens."},
    {"refuses", "Refuses frames", "Visitors see an error of their browser in place of the page."},
    {"takes-over", "Takes over the window",
     "The tour is gone as soon as the page comes, or the page stays empty."},
    {"insecure", "Insecure", "Visitors of a tour with https see nothing of the page."},
    {"moved", "Moved", "Visitors see the page, as long as its old address leads there."},
    {"slow", "Slow", "Visitors see the page after a long wait."},
    {"plays", "Plays", "Visitors see the page."},
}};

/// In the order of the postings.
constexpr std::array<std::string_view, 3> postings = {"https", "http", "disk"};

const VerdictText& textOf(Verdict verdict) {
    return texts.at(static_cast<std::size_t>(verdict));
}

std::string sentence(std::string_view before, const std::string& name, std::string_view behind) {
    return std::string(before).append(name).append(behind);
}

bool isPermanent(const HttpAnswer& answer) {
    constexpr int movedPermanently = 301;
    constexpr int permanentRedirect = 308;
    return answer.status == movedPermanently || answer.status == permanentRedirect;
}

/// Browsers keep what stands behind "#" where the new address has nothing of the kind.
std::string withFragmentOf(const std::string& address, std::string target) {
    const std::size_t fragment = address.find('#');
    if (fragment != std::string::npos && target.find('#') == std::string::npos)
        target += address.substr(fragment);
    return target;
}

/// One page leads there for good after the other.
std::string newAddressOf(const PageFindings& findings) {
    const auto& answers = findings.answers;
    std::size_t steps = 0;
    while (steps + 1 < answers.size() && isPermanent(answers[steps]))
        ++steps;
    return steps == 0 ? std::string() : withFragmentOf(findings.address, answers[steps].address);
}

/// What tours of this audience are answered by these headers.
FramingVerdict policyFor(const Audience& audience, const std::vector<HttpAnswer>& answers) {
    if (audience.posting == Posting::disk)
        return framingPolicyFromDisk(answers);
    const std::string_view scheme = nameOf(audience.posting);
    std::vector<WebOrigin> sites = audience.sites;
    std::erase_if(sites, [&](const WebOrigin& site) { return site.scheme != scheme; });
    if (sites.empty())
        return framingPolicy(answers);
    for (const WebOrigin& site : sites) {
        if (FramingVerdict verdict = framingPolicyAt(site, answers); !verdict.allowed)
            return verdict;
    }
    return {};
}

/// What the judgement of frames stands on: the answers of what the browser has refused, or what the program
/// was answered where that does not contradict what the browser has shown.
std::vector<std::vector<HttpAnswer>> answersAboutFrames(const PageFindings& findings) {
    std::vector<std::vector<HttpAnswer>> all;
    if (findings.frame == PageFindings::Frame::page) {
        if (framingPolicyAt(findings.framedBy, findings.answers).allowed)
            all.push_back(findings.answers);
        return all;
    }
    for (const std::string& message : findings.console) {
        if (const auto answer = answerOnConsole(message))
            all.push_back({*answer});
    }
    // Should the browser use other words one day.
    if (all.empty() && !framingPolicyAt(findings.framedBy, findings.answers).allowed)
        all.push_back(findings.answers);
    return all;
}

class Judgement final {
public:
    Judgement(const PageFindings& findings, const Audience& audience)
        : m_findings(findings), m_audience(audience), m_aboutFrames(answersAboutFrames(findings)) {}

    PageVerdict verdict() const {
        PageVerdict result;
        result.finalAddress =
            m_findings.answers.empty() ? m_findings.address : m_findings.answers.back().address;
        result.newAddress = newAddressOf(m_findings);
        for (const auto& answers : m_aboutFrames) {
            const std::vector<std::string> sites = sitesTakenIn(answers);
            result.playsFor.insert(result.playsFor.end(), sites.begin(), sites.end());
        }
        for (const auto& [verdict, question] : questions) {
            if (auto why = (this->*question)()) {
                result.verdict = verdict;
                result.why = *why;
                break;
            }
        }
        return result;
    }

private:
    /// Why the verdict applies; nothing when it does not.
    using Why = std::optional<std::string>;
    struct Question {
        Verdict verdict;
        Why (Judgement::*question)() const;
    };

    Why isGone() const {
        if (status() == notFound || status() == gone)
            return "The server says that there is no such page (" + std::to_string(status()) + ").";
        if (isPageThere())
            return std::nullopt;
        switch (m_findings.failure) {
        case RequestFailure::noSuchHost:
            return sentence("There is no computer with the name ", host(), ".");
        case RequestFailure::noServer:
            return sentence("No web server answers at ", host(), ".");
        case RequestFailure::untrusted:
            return sentence("The server of ", host(), " cannot prove who it is.");
        default:
            return std::nullopt;
        }
    }

    Why fails() const {
        if (status() == unauthorized)
            return "The server asks for a password.";
        if (status() == tooManyRequests)
            return "The server is asked too often, and answers only later.";
        if (status() >= firstError)
            return "The server answers with an error (" + std::to_string(status()) + ").";
        if (isPageThere() || m_findings.isDownload || !m_aboutFrames.empty())
            return std::nullopt;
        if (m_findings.failure == RequestFailure::goesRound)
            return "The server leads from one address to the next without end.";
        if (m_findings.frame == PageFindings::Frame::nothing)
            return "Nothing has come for as long as it was waited for.";
        return "The page has not come: the frame shows an error of the browser.";
    }

    Why isDownload() const {
        return m_findings.isDownload ? Why("Browsers do not show such a file, they save it.") : std::nullopt;
    }

    Why refuses() const {
        for (const auto& answers : m_aboutFrames) {
            const FramingVerdict policy = policyFor(m_audience, answers);
            if (!policy.allowed)
                return "Its server refuses frames of other sites: " + policy.reason;
        }
        return std::nullopt;
    }

    Why takesOver() const {
        return m_findings.triedToTakeOver ? Why("The page wants the whole window for itself.") : std::nullopt;
    }

    Why isInsecure() const {
        const auto& answers = m_findings.answers;
        const bool onTheWay = std::ranges::any_of(
            answers, [](const HttpAnswer& answer) { return wendmark::isInsecure(answer.address); });
        if (m_audience.posting != Posting::https || !(onTheWay || wendmark::isInsecure(m_findings.address)))
            return std::nullopt;
        return "It comes by http, which browsers leave out of a tour with https.";
    }

    Why isMoved() const {
        const std::string address = newAddressOf(m_findings);
        return address.empty() ? std::nullopt : Why("Its server names another address for good: " + address);
    }

    Why isSlow() const {
        constexpr std::int64_t second = 1000;
        if (m_findings.milliseconds <= slowPage)
            return std::nullopt;
        return "It has taken " + std::to_string(m_findings.milliseconds / second) + " seconds to come.";
    }

    bool isPageThere() const { return m_findings.frame == PageFindings::Frame::page; }
    int status() const { return m_findings.answers.empty() ? 0 : m_findings.answers.back().status; }
    std::string host() const {
        const auto& answers = m_findings.answers;
        return hostOf(answers.empty() ? m_findings.address : answers.back().address);
    }

    static constexpr std::array<Question, 8> questions = {{{Verdict::gone, &Judgement::isGone},
                                                           {Verdict::fails, &Judgement::fails},
                                                           {Verdict::download, &Judgement::isDownload},
                                                           {Verdict::refuses, &Judgement::refuses},
                                                           {Verdict::takesOver, &Judgement::takesOver},
                                                           {Verdict::insecure, &Judgement::isInsecure},
                                                           {Verdict::moved, &Judgement::isMoved},
                                                           {Verdict::slow, &Judgement::isSlow}}};

    const PageFindings& m_findings;
    const Audience& m_audience;
    std::vector<std::vector<HttpAnswer>> m_aboutFrames;
};

} // namespace

std::string_view nameOf(Verdict verdict) {
    return textOf(verdict).name;
}

std::string_view wordsFor(Verdict verdict) {
    return textOf(verdict).words;
}

std::string_view visitorsSee(Verdict verdict) {
    return textOf(verdict).seen;
}

bool isShown(Verdict verdict) {
    return verdict == Verdict::moved || verdict == Verdict::slow || verdict == Verdict::plays;
}

std::string_view nameOf(Posting posting) {
    return postings.at(static_cast<std::size_t>(posting));
}

std::optional<Posting> postingNamed(std::string_view name) {
    const auto* const found = std::ranges::find(postings, name);
    return found == postings.end() ? std::nullopt
                                   : std::optional(static_cast<Posting>(found - postings.begin()));
}

bool isWorthACard(Verdict verdict) {
    constexpr std::array there = {Verdict::fails,     Verdict::download, Verdict::refuses,
                                  Verdict::takesOver, Verdict::insecure, Verdict::slow};
    return std::ranges::find(there, verdict) != there.end();
}

std::vector<std::string_view> remediesFor(const PageVerdict& verdict) {
    std::vector<std::string_view> remedies;
    if (!verdict.newAddress.empty())
        remedies.emplace_back("new-address");
    if (isWorthACard(verdict.verdict))
        remedies.emplace_back("card");
    return remedies;
}

PageVerdict judgePage(const PageFindings& findings, const Audience& audience) {
    return Judgement(findings, audience).verdict();
}

} // namespace wendmark
