#pragma once

#include <thread>

/// Lets a thread run on its own under a name of at most 15 characters. Nobody waits for it: what it
/// works on must be its own, and it reaches others by messages.
///
/// Thread: any.
void LetRun(std::thread thread, const char* name);
