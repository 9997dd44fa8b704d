#pragma once

#include "base/Settings.h"

#include <QRect>

/// Where the main window stands in its two forms. Coordinates are device-independent pixels.
struct WindowPlaces {
    QRect normal;
    QRect mini;
};

inline constexpr QSize kMiniSize(400, 89);

/// The smallest size of the normal form.
inline constexpr QSize kSmallestSize(640, 480);

/// The places for a first run on a screen with this work area.
[[nodiscard]] WindowPlaces FirstRunPlaces(const QRect& workArea);

/// The saved places, mended so that the window can be seen and reached on this work area.
[[nodiscard]] WindowPlaces SavedPlaces(const CTrackDeckSettings& settings, const QRect& workArea);
