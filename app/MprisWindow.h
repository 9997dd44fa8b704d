#pragma once

#include <functional>

/// What the desktop's media controls reach of the window.
struct MprisWindow {
    std::function<void()> raise;
    std::function<void()> quit;
    std::function<int()> getVolume; ///< position of the slider, 0 to 100
    std::function<void(int)> setVolume;
};
