#pragma once

#include <QPalette>

// Every role is set for every state of a window, so that no colour of the desktop's can mix with
// ours. Text has a contrast of 4.5:1 on its ground, but where it is disabled.

/// Dialogs, menus and bars: light text on the dark of the frame.
[[nodiscard]] QPalette SkinPalette();

/// Paper, where music is listed: dark text on white.
[[nodiscard]] QPalette PagePalette();

/// Gives the application its style and SkinPalette(), which a desktop's change of its own colours
/// leaves alone. The font stays the desktop's. Called once, before any window is made.
void UseSkinPalette();
