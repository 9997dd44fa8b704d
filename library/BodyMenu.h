#pragma once

#include <map>

class CMediaList;

/// How an item of a menu is to be had.
enum class ItemState { Gone, Gray, Enabled };

/// The context menu of a track's or playlist's row, as its list has it.
struct BodyMenu {
    std::map<int, ItemState> items; ///< by command; a submenu by the first of its own
    bool opens = false;             ///< kBodyEdit opens a playlist
};

/// The menu of the record at an index. A selection has that of the list it was taken from.
[[nodiscard]] BodyMenu MakeBodyMenu(const CMediaList& list, int index);
