#pragma once

#include "base/Outcome.h"
#include "serve/TourServer.h"

#include <QString>
#include <QTemporaryDir>
#include <QUrl>

namespace wendmark {

/// Pages with one frame, as a tour has it for the pages of its stops, each at an address of this computer's
/// own that no other page can guess. So pages are framed as they are in a tour on a web server.
class FramePages final {
public:
    FramePages();

    /// A failure: no folder, or no server, is to be had, or a page could not be written.
    const Outcome& state() const { return m_state; }

    /// Makes the page that frames this address. Empty when it cannot be written.
    QUrl make(const QString& address);

    /// Takes a page back.
    void remove(const QUrl& page);

private:
    QTemporaryDir m_folder;
    TourServer m_server;
    Outcome m_state;
};

} // namespace wendmark
