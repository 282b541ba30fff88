#pragma once

#include <QString>

namespace wendmark {

/// A server, or the proxy on the way to it, wants to know who asks. What is answered is kept in memory, by
/// the engine, until the program ends.
struct PasswordQuestion {
    QString host;
    QString realm;  ///< What the server calls the part of it that the password is for; may be empty.
    QString scheme; ///< Of the page, "http" or "https"; empty for a proxy.
    bool ofProxy = false;

    bool answered = false;
    QString user = {};
    QString password = {};
};

} // namespace wendmark
