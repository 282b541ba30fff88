#pragma once

#include "commands/PageBundle.h"

namespace wendmark::test {

/// A page that shows files of every kind, with names and addresses of any length.
inline PageBundle pageWithParts() {
    const std::string longName(180, 'n');
    PageBundle bundle;
    bundle.page = {"/home/author/Pages/" + longName + ".htm", longName + ".htm", "<img src=eel.png>"};
    for (int i = 1; i <= 20; ++i) {
        const std::string name = "eel" + std::to_string(i) + ".png";
        bundle.parts.push_back({"img/" + name, {"/home/author/Pages/img/" + name, name}, i % 2 == 0});
    }
    bundle.parts.push_back(
        {"img/" + longName + ".png", {"/home/author/Pages/img/" + longName + ".png", longName + ".png"}});
    bundle.missing = {"gone.png", longName + ".gif"};
    bundle.elsewhere = {"../" + longName + ".jpg"};
    bundle.leftOut = 3;
    return bundle;
}

} // namespace wendmark::test
