#pragma once

#include <cstdlib>

/// Ends the fuzzer with a finding unless this holds.
inline void Require(bool holds) {
    if (!holds)
        std::abort();
}
