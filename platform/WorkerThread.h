#pragma once

#include <functional>

/// Runs work on a thread of its own under a name of at most 15 characters. Nobody waits for it:
/// what it works on must be its own, and it reaches others by messages. It lets no exception out.
///
/// Thread: any. Errors: throws std::system_error if the system gives no thread.
void LetRun(std::function<void()> work, const char* name);

/// How many threads that were let run have not come to their end. As long as there are any, static
/// objects must not be destroyed.
[[nodiscard]] int CountRunningThreads();
