#include "tour_cli/TourTarget.h"

#include "base/Files.h"
#include "model/TourFiles.h"

#include <filesystem>
#include <random>

namespace wendmark::cli {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view choicesName = "tourchoices.js";

void replaceAll(std::string& text, const std::string& part, const std::string& by) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + by.size()))
        text.replace(at, part.size(), by);
}

/// Unlike any other run's.
std::string hiddenName() {
    return ".wendmark-publish-" + std::to_string(std::random_device{}());
}

sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        sigaddset(&signals, signal);
    return signals;
}

} // namespace

HeldSignals::HeldSignals() {
    const sigset_t ending = endingSignals();
    sigprocmask(SIG_BLOCK, &ending, &m_before);
}

HeldSignals::~HeldSignals() {
    sigprocmask(SIG_SETMASK, &m_before, nullptr);
}

bool HeldSignals::isWaiting() {
    sigset_t waiting;
    sigpending(&waiting);
    return sigismember(&waiting, SIGHUP) == 1 || sigismember(&waiting, SIGINT) == 1 ||
           sigismember(&waiting, SIGTERM) == 1;
}

TourTarget::TourTarget(std::string folder)
    : m_folder(std::move(folder))
    , m_parent(fs::path(m_folder).parent_path().string())
    , m_replacement(m_folder, hiddenName()) {}

Outcome TourTarget::make() {
    return inOwnWords(m_replacement.beginNew());
}

Outcome TourTarget::makeIfMissing() {
    std::error_code error;
    if (fs::is_directory(m_folder, error))
        return inOwnWords(m_replacement.begin());
    Outcome parentMade = m_parent.makeIfMissing();
    return parentMade.ok() ? make() : parentMade;
}

Outcome TourTarget::putInPlace() {
    if (HeldSignals::isWaiting())
        return Outcome::failure(m_folder + " stays what it was: the run was interrupted");
    const bool hasNoChoices = files::isMissing(files::join(finished(), choicesName));
    Outcome outcome = m_replacement.commitAllOrNothing(savedLast());
    if (!outcome.ok())
        return outcome;
    m_parent.keep();
    // No page asks for one that is left over, so that it may stay where it cannot be removed.
    const std::string former = files::join(m_folder, choicesName);
    if (hasNoChoices && files::canBeRead(former))
        static_cast<void>(files::remove(former));
    return outcome;
}

Outcome TourTarget::inOwnWords(const Outcome& outcome) const {
    std::string message = outcome.message();
    if (!outcome.ok() && !finished().empty() && !m_replacement.keepsOld())
        replaceAll(message, finished(), m_folder);
    return outcome.ok() ? outcome : Outcome::failure(std::move(message));
}

} // namespace wendmark::cli
