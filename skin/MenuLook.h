#pragma once

class KeyValueStore;

/// How menus are drawn.
enum class MenuLook {
    Normal,  ///< flat
    Classic, ///< with raised and sunken edges, for who has chosen the classic desktop theme
};

/// The look for the desktop theme that a store names under
/// "Software/Microsoft/Plus!/Themes/Current". Normal where it names none.
[[nodiscard]] MenuLook MenuLookFor(const KeyValueStore& store);

/// The look of this process, taken from the user's store at the first call.
[[nodiscard]] MenuLook CurrentMenuLook();
