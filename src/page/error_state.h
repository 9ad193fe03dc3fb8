#pragma once

namespace keldrin {

/// The error of the last failing call that nobody has read yet. One per process: pages and the
/// toolkit share it, so the last failure is the one that is reported.
struct ErrorState {
    int number = 0;      ///< 0 none
    int systemError = 0; ///< the system's error value that came with the last error
};

ErrorState &errorState();

/// Leaves an error, as a failing call does.
void setErrorState(int number, int systemError = 0);

/// The number of the error, 0 if none; it counts as read from then on.
int takeErrorNumber();

} // namespace keldrin
