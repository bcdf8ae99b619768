#pragma once

#include <exception>

// A failure met while the system dispatched a message to the window. It can't unwind through the
// system's frames of the dispatch, so the window procedure keeps it here and ends the message
// loop; the application throws it again once the loop is left, and the program's entry shows it
// as it would any other failure.

// Keeps the first failure and asks the message loop to end.
void keepDispatchFailure(std::exception_ptr failure);
// True while a failure is kept.
bool hasDispatchFailure();
// Throws the kept failure, if there is one, and forgets it.
void rethrowDispatchFailure();
