#pragma once

#include "support/ScratchFolder.h"

#include <string>

namespace wendmark::test {

/// The only spelling dictionaries there are while it lives: a few words of English in UTF-8, and of German in
/// Latin-1. Words that are added are forgotten with it.
class Dictionaries final {
public:
    Dictionaries();
    ~Dictionaries();
    Dictionaries(const Dictionaries&) = delete;
    Dictionaries& operator=(const Dictionaries&) = delete;

    void install(const std::string& language, const std::string& rules, const std::string& words) const;
    void installForUser(const std::string& language, const std::string& rules,
                        const std::string& words) const;

    /// From now on there is none.
    void removeAll() const;

    std::string systemFile(const std::string& name) const;
    std::string configFolder() const;

private:
    ScratchFolder m_scratch;
};

} // namespace wendmark::test
