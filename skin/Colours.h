#pragma once

#include <QRgb>

/// The palette of the program. Pictures and theme are drawn with it (tools/make-theme), and the
/// controls take their colours from it, so a colour is changed here alone.
namespace Colours {

inline constexpr QRgb kInk0 = 0xFF0B0C0E; ///< edges
inline constexpr QRgb kInk1 = 0xFF15171A; ///< frame, band and dialogs
inline constexpr QRgb kInk2 = 0xFF2A2D33; ///< raised parts
inline constexpr QRgb kLine = 0xFF3C4047; ///< highlights of one pixel

inline constexpr QRgb kText = 0xFFFFFFFF;         ///< titles
inline constexpr QRgb kQuietText = 0xFFD9DCE1;    ///< menus, captions, glyphs
inline constexpr QRgb kDisabledText = 0xFF7C828C; ///< what can't be used now

inline constexpr QRgb kAccent = 0xFF7ABEDF;     ///< selection, hover, focus, progress
inline constexpr QRgb kDeepAccent = 0xFF64A0FF; ///< the active section
inline constexpr QRgb kPage = 0xFFF6F6F6;       ///< paper, where music is listed
inline constexpr QRgb kWarning = 0xFFFFB454;    ///< the sign in warnings
inline constexpr QRgb kClose = 0xFFD9534F;      ///< the close button under the mouse

} // namespace Colours
