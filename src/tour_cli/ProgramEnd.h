#pragma once

#include "base/Outcome.h"

/// How the companion's programs end and what they say then.
namespace wendmark::cli {

enum ExitStatus { done = 0, couldNot = 1, wrongUse = 2 };

/// A file-size limit, or nobody at the other end of a pipe, is a failure to be reported and not the end.
void handleSignalsAsFailures();

/// Sends off what was printed.
Outcome flushOutput();

/// Tells of a failure, in one line on the standard error stream.
int exitStatusOf(const Outcome& outcome);

/// Same after a command that has changed files: they are there also when nobody hears of it.
int endAfterWork(const Outcome& outcome);

} // namespace wendmark::cli
