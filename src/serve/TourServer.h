#pragma once

#include "base/Outcome.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace wendmark {

/// A web server for the browsers of this machine, in threads of its own: plays the files of one folder, at an
/// address that nobody can guess, on a free port of the loopback address. It answers GET and HEAD requests
/// that name this address in their Host line, tells browsers to keep nothing, and lists no folder.
///
/// Like every server of its library, it makes the process ignore SIGPIPE.
class TourServer final {
public:
    TourServer();
    /// Stops serving; waits until the last answer under way has ended, or a few seconds.
    ~TourServer();
    TourServer(const TourServer&) = delete;
    TourServer& operator=(const TourServer&) = delete;

    /// Serves this folder from now on, and no other any more. Goes on under the same address when it already
    /// does. A failure: no port or no thread is to be had.
    Outcome serve(const std::string& folder);

    /// Serves nothing from now on. Does not wait for answers under way.
    void stop();

    /// Empty: none.
    const std::string& folder() const { return m_folder; }

    /// Address of a file in the folder, whose name is a plain one without anything to encode. Empty while
    /// nothing is served.
    std::string addressOf(std::string_view name) const;

private:
    class Service;

    std::string m_folder;
    std::unique_ptr<Service> m_service;
    std::vector<std::unique_ptr<Service>> m_ending; ///< Stopped, with answers that may be under way.
};

} // namespace wendmark
