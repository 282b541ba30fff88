#pragma once

#include "base/Outcome.h"
#include "recovery/RecoveryRecord.h"

#include <map>
#include <string>
#include <vector>

namespace wendmark {

class Log;

/// The author's own files of a working copy with their stamps, by name.
using AuthorsFiles = std::map<std::string, std::string>;

/// What a run of the program that did not end by itself has left.
struct RecoverySession {
    std::string folder;
    RecoveryRecord record;
};

/// Keeps tours that are being edited in folders outside the working copy, one for each run of the program: a
/// record and the author's files. A failure is a line in the log; as keep() is called again and again, it
/// writes one when it begins to fail and a note when everything is kept again.
class RecoveryStore final {
public:
    /// The runs of one program share `folder`, no two of them at a time; it is made when it is needed. The
    /// log must outlive the store.
    RecoveryStore(std::string folder, Log& log);

    /// Keeps the tour with the author's files of the working copy, in place of what this run has kept before.
    /// Whenever the program ends, this state or the one before can be had. False when it could not be kept.
    bool keep(const RecoveryRecord& record, const std::string& workingCopy);

    /// Nothing of this run is left to recover.
    void forget();

    /// What former runs have left, the latest first.
    std::vector<RecoverySession> leftovers() const;

    /// Copies the author's files of a session into the working copy.
    void restoreFiles(const RecoverySession& session, const std::string& workingCopy) const;

    void discard(const RecoverySession& session) const;

private:
    Outcome beginSession();
    Outcome keepFiles(const std::string& workingCopy);
    void tell(const Outcome& kept);

    std::string m_folder;
    Log& m_log;
    std::string m_session; ///< This run's folder; empty until something is kept.
    AuthorsFiles m_kept;
    bool m_isFailing = false; ///< Something could not be kept the last time, and the log says so.
};

/// All files of a working copy but those that are generated from the model and the templates.
AuthorsFiles authorsFiles(const std::string& workingCopy);

} // namespace wendmark
