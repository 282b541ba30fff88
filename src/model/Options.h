#pragma once

#include <string>

namespace wendmark {

/// The program's own settings, the same for every tour.
struct Options {
    std::string
        htmlEditorPath;        ///< Full path of the external HTML editor; empty before the settings are read.
    bool warnURLChange = true; ///< Ask before the site editor replaces a stop's address.
    bool autoCloseBrowser = false; ///< Close the site editor after a page is accepted.
};

} // namespace wendmark
