#pragma once

/// A disk that is slow: a library that puts itself before the calls by which files are opened. Each
/// opening of a file below the folder that TRACKDECK_SLOW_FOLDER names takes TRACKDECK_SLOW_MS
/// longer (30 if it isn't set); the one whose number TRACKDECK_SLOW_STALL tells takes 5 s. A
/// program that isn't linked with it has it by LD_PRELOAD.
///
/// Thread: any.
namespace SlowDisk {

/// Lets the n-th opening from now on stall.
void StallAt(int n);

/// How many have stalled until now, or still do.
[[nodiscard]] int CountStalls();

/// Files below the folder that the main thread has opened until now.
[[nodiscard]] int OpenedByMainThread();

} // namespace SlowDisk
