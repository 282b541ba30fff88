#pragma once

#include <functional>

class QDialog;

namespace wendmark::test {

/// Calls `answer` with the next modal dialog as soon as it is on screen, and again for each one after it for
/// which a further call was made. Fails the test when none comes.
void onNextDialog(std::function<void(QDialog&)> answer);

/// How many answers still wait for their dialog; 0 at the end of a test that saw all it expected.
int dialogsExpected();

/// Forgets the answers that still wait.
void expectNoDialogs();

/// From now on no modal dialog holds up a test that has failed: whatever is open then is rejected, so that
/// the test function ends. A dialog that nobody has closed when the patience is over fails its test.
void watchDialogs();

/// How many looks, some milliseconds apart, are taken before a dialog is missed, or one that stays open is
/// held against the test. Generous unless a test of the watch itself says otherwise.
void setDialogPatience(int looks);

} // namespace wendmark::test
