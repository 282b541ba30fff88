#pragma once

namespace wendmark {

/// Why a page does not come.
enum class LoadFailure {
    stopped,      ///< By the author.
    otherProgram, ///< Addresses of this kind, or of this place, are not shown.
    nothingSent,  ///< The server has answered without a page, or with a file to be saved.
    noSuchHost,
    noServer,     ///< Nothing takes connections there.
    noAnswer,     ///< Waiting for the server has taken too long.
    notReachable, ///< There is no way to the server, or no network.
    cutOff,       ///< The connection broke.
    goesRound,    ///< The server leads from one address to the next without end.
    noSuchFile,
    untrusted, ///< The server cannot prove who it is.
    other
};

/// The same for what the engine says. `errorCode`: one of its own, below 0.
LoadFailure loadFailureFrom(int errorCode);

} // namespace wendmark
