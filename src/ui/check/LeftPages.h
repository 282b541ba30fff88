#pragma once

#include "check/PageVerdict.h"

#include <QStringList>
#include <string>

namespace wendmark {

class SettingsStore;

/// What the author has been told of pages and leaves as it is, also in later runs of the program. An entry is
/// for one verdict, given for one posting: whatever else becomes of the page is told anew.
class LeftPages final {
public:
    /// The most entries that are kept; the oldest go first.
    static constexpr qsizetype most = 1000;

    /// The settings must outlive it.
    explicit LeftPages(SettingsStore& settings);

    bool holds(Posting posting, Verdict verdict, const std::string& address) const;
    void add(Posting posting, Verdict verdict, const std::string& address);
    void remove(Posting posting, Verdict verdict, const std::string& address);

    /// The page has this verdict now: forgets what was left of it when it had others.
    void keepOnly(Posting posting, Verdict verdict, const std::string& address);

private:
    void store();

    SettingsStore& m_settings;
    QStringList m_entries; ///< The oldest first.
};

} // namespace wendmark
