#pragma once

#include <QtCore/qnamespace.h>

#include <span>

/// Numbers of the commands. A menu item and a button that do the same share one. They are a
/// contract. TrackColumns and GenreMenu have some more.
namespace Command {
enum Id : int {
    kMiniPlayer = 999,
    kPrevious = 1006,
    kPlayPause = 1007,
    kNext = 1008,
    kCopy = 1012, ///< the copy button: to the phone, or from it
    kMoveDown = 1045,
    kMoveUp = 1046,
    kSavePlaylist = 1047,
    kClosePlaylist = 1048,

    kCreatePlaylist = 32771,
    kScan = 32772,
    kConvert = 32774,
    kCopyToPhone = 32775,
    kRandomTransfer = 32776,
    kCopyToCollection = 32777,
    kCalculateTempo = 32778,
    kCancelAll = 32779,
    kEditAddToPlaylist = 32781,
    kSelectAll = 32782,
    kDeselectAll = 32783,
    kDelete = 32784,
    kEditRefresh = 32785,
    kViewCollection = 32786,
    kViewAllMusic = 32787,
    kCustomizeView = 32790,
    kPlaySingle = 32791,
    kPlayContinuous = 32792,
    kPlayRandom = 32793,
    kSettings = 32795,
    kHelp = 32796,
    kAbout = 32797,
    kExit = 32801,
    kViewPhone = 32802,
    kHeaderCustomize = 32823,
    kFirstGenre = 32865, ///< of those that GenreMenu names
    kTitleRefresh = 33111,
    kBodyEdit = 33113,
    kBodyPlay = 33114,
    kBodyDelete = 33115,
    kBodyCancel = 33116,
    kBodySelectAll = 33117,
    kBodyDeselectAll = 33118,
    kViewSelection = 33121,
    kBodyRename = 33133,
    kPlayRandomContinuous = 33134,
    kFirstCd = 35000,
    kLastCd = 35026,
    kFirstPlaylist = 35100, ///< of the submenu Add to Playlist
    kLastPlaylist = 35200,
};

/// Those of the play modes, in the order of the modes' numbers.
inline constexpr int kPlayModes[] = {kPlaySingle, kPlayContinuous, kPlayRandom,
                                     kPlayRandomContinuous};
} // namespace Command

/// What a menu is made of. Its texts are those of the key that GetMenuText() makes of the menu's
/// prefix and the item's name.
struct MenuItem {
    int command = 0; ///< 0: a line
    const char* name = "";
    QKeyCombination key = Qt::Key(0); ///< that works without the menu; 0: none
};

struct Menu {
    const char* name;
    const char* prefix; ///< of its items' keys
    std::span<const MenuItem> items;
};

inline constexpr MenuItem kLine{};

inline constexpr MenuItem kFileItems[] = {
    {Command::kCreatePlaylist, "Create New Playlist", Qt::CTRL | Qt::Key_N},
    {Command::kScan, "Scan PC for Musics", Qt::CTRL | Qt::Key_F},
    kLine,
    {Command::kConvert, "Convert to Mobile Optimized Format"},
    {Command::kCopyToPhone, "Copy to Phone"},
    {Command::kRandomTransfer, "Random Transfer"},
    {Command::kCopyToCollection, "Copy to My Collection"},
    {Command::kCalculateTempo, "Calculate Tempo"},
    kLine,
    {Command::kCancelAll, "Cancel All Operations", Qt::CTRL | Qt::Key_Period},
    kLine,
    {Command::kExit, "Exit", Qt::CTRL | Qt::Key_Q},
};

inline constexpr MenuItem kEditItems[] = {
    {Command::kEditAddToPlaylist, "Add to Playlist"},
    kLine,
    {Command::kSelectAll, "Select All", Qt::CTRL | Qt::Key_A},
    {Command::kDeselectAll, "Deselct All", Qt::CTRL | Qt::Key_D},
    {Command::kDelete, "Delete", Qt::Key_Delete},
    kLine,
    {Command::kEditRefresh, "Refresh"},
};

inline constexpr MenuItem kViewItems[] = {
    {Command::kViewPhone, "My Phone"},
    {Command::kViewCollection, "My Collection", Qt::CTRL | Qt::Key_1},
    {Command::kViewAllMusic, "All Music", Qt::CTRL | Qt::Key_2},
    {Command::kViewSelection, "My Selection", Qt::CTRL | Qt::Key_3},
    kLine,
    {Command::kCustomizeView, "Customize View", Qt::CTRL | Qt::Key_L},
    kLine,
    {Command::kMiniPlayer, "IDS_SYS_MINIPLAYER", Qt::CTRL | Qt::Key_M},
};

inline constexpr MenuItem kOptionsItems[] = {
    {Command::kPlaySingle, "Single Play"},
    {Command::kPlayContinuous, "Continuous Play"},
    {Command::kPlayRandom, "Random Play"},
    {Command::kPlayRandomContinuous, "Random_Continuous Play"},
    kLine,
    {Command::kSettings, "Setting"},
};

inline constexpr MenuItem kHelpItems[] = {
    {Command::kHelp, "Help Toptics", Qt::Key_F1},
    {Command::kAbout, "About Veltria Track Deck"},
};

/// What has a button and no place in the menus.
inline constexpr MenuItem kButtonItems[] = {
    {Command::kCopy, "IDS_BT_TOCOLLECT", Qt::CTRL | Qt::Key_T},
    {Command::kClosePlaylist, "IDS_PLAYLIST_CLOSE", Qt::CTRL | Qt::Key_W},
    {Command::kSavePlaylist, "IDS_PLAYLIST_SAVE", Qt::CTRL | Qt::Key_S},
    {Command::kMoveUp, "IDS_PLAYLIST_UP", Qt::ALT | Qt::Key_Up},
    {Command::kMoveDown, "IDS_PLAYLIST_DOWN", Qt::ALT | Qt::Key_Down},
};

/// The menus of the window's menu bar.
inline constexpr Menu kMainMenus[] = {
    {"File", "IDS_FILE_", kFileItems}, {"Edit", "IDS_EDIT_", kEditItems},
    {"View", "IDS_VIEW_", kViewItems}, {"Options", "IDS_OPTIONS_", kOptionsItems},
    {"Help", "IDS_HELP_", kHelpItems},
};

/// The context menu of a row. Two of its items, those of many commands, are submenus.
inline constexpr MenuItem kBodyItems[] = {
    {Command::kBodyPlay, "Play"},
    {Command::kBodyEdit, "Edit"},
    {Command::kBodyRename, "Rename"},
    {Command::kBodyDelete, "Delete"},
    kLine,
    {Command::kFirstPlaylist, "IDS_ADDTOPLAYLIST"},
    {Command::kFirstGenre, "IDS_SELECTGENRE"},
    kLine,
    {Command::kBodySelectAll, "Select All"},
    {Command::kBodyDeselectAll, "Deselect All"},
    kLine,
    {Command::kBodyCancel, "Cancel"},
};
