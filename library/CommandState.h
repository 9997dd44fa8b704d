#pragma once

#include "base/Listeners.h"

#include <cstdint>

class CMediaList;
class CMediaLists;
class IStatusDisplay;
class ITrackPlayer;

/// The bits of the state word. Each of the lower ones says that a command can be given.
namespace UiState {
inline constexpr std::uint32_t kCreatePlaylist = 0x1;
inline constexpr std::uint32_t kScan = 0x2;
inline constexpr std::uint32_t kConvert = 0x4;
inline constexpr std::uint32_t kCopyToPhone = 0x8;
inline constexpr std::uint32_t kCopyToCollection = 0x20;
inline constexpr std::uint32_t kCancelAll = 0x80;
inline constexpr std::uint32_t kSelectAll = 0x200;
inline constexpr std::uint32_t kDeselectAll = 0x400;
inline constexpr std::uint32_t kDelete = 0x800;
inline constexpr std::uint32_t kPrevious = 0x2000;
inline constexpr std::uint32_t kPlayPause = 0x4000;
inline constexpr std::uint32_t kNext = 0x8000;
inline constexpr std::uint32_t kCopy = 0x10000;

inline constexpr std::uint32_t kPlayModeMask = 0xF00000;
inline constexpr std::uint32_t kPlayModeStep = 0x100000; ///< times the mode's number and one
inline constexpr std::uint32_t kViewMask = 0xF000000;
inline constexpr std::uint32_t kViewPhone = 0x1000000;
inline constexpr std::uint32_t kViewCollection = 0x2000000;
inline constexpr std::uint32_t kViewAllMusic = 0x3000000;
inline constexpr std::uint32_t kViewSelection = 0x4000000;
inline constexpr std::uint32_t kViewCd = 0x5000000; ///< plus the ordinal of the drive
} // namespace UiState

/// The menus and buttons, as far as the state of commands is seen there.
///
/// Thread: interface thread.
class ICommandDisplay {
public:
    virtual void EnableCommand(int command, bool enable) = 0;

    /// Marks the one of several items that holds: a play mode, or the view.
    virtual void MarkCommand(int command) = 0;

    /// What the copy button does.
    virtual void ShowCopyDirection(bool toPhone) = 0;

protected:
    ~ICommandDisplay() = default;
};

/// The word that says which commands can be given now, which play mode is on, and which list is
/// viewed; and the rules by which it follows the active list and its checks.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CCommandState {
public:
    CCommandState(const CMediaLists& lists, const ITrackPlayer& player, IStatusDisplay& status,
                  ICommandDisplay& display);

    /// To be called after every change of the active list, of checks, and of the operations that
    /// run.
    void UpdateCommands();

    /// Hears of the end of each UpdateCommands(), for what else follows the active list.
    [[nodiscard]] CListening OnUpdated(std::function<void()> call) {
        return m_updated.Listen(std::move(call));
    }

    /// Asks the player anew. To be called after it has changed.
    void UpdatePlayer();

    /// Marks the view of a list that is on screen, even if it is folded and thus not the active
    /// one.
    void MarkView(const CMediaList& list);

    /// Shows a bit, or a value of one of the two marks; for 0 shows all of the word.
    void ApplyUiState(std::uint32_t value);

    void SetBit(std::uint32_t bit, bool set);
    void ClearBit(std::uint32_t bit) { SetBit(bit, false); }

    /// Puts the bits of `value` under `mask` in the place of those of the word, and shows `value`.
    void SetField(std::uint32_t mask, std::uint32_t value);

    [[nodiscard]] std::uint32_t GetUiState() const { return m_dwUiState; }

private:
    void ShowSelected(const CMediaList* list);
    void SetListBits(const CMediaList& list, bool phone);

    const CMediaLists& m_lists;
    const ITrackPlayer& m_player;
    IStatusDisplay& m_status;
    ICommandDisplay& m_display;
    CListeners<> m_updated;
    std::uint32_t m_dwUiState;
    std::uint32_t m_iViewedCd = 0; ///< ordinal of the drive when a CD is viewed
};
