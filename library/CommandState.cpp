#include "library/CommandState.h"

#include "base/IStatusDisplay.h"
#include "base/Language.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/MediaLists.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

using namespace UiState;

constexpr std::uint32_t kAtStart =
    kScan | kSelectAll | kDeselectAll | kPrevious | kNext | 2 * kPlayModeStep | kViewCollection;

/// What a bit, or a view's value, stands for. The bits without a constant are never set: those
/// items wait for their part of the program.
struct BitOfCommand {
    std::uint32_t value;
    int command;
};
constexpr BitOfCommand kBits[] = {
    {kCreatePlaylist, Command::kCreatePlaylist},
    {kScan, Command::kScan},
    {kConvert, Command::kConvert},
    {kCopyToPhone, Command::kCopyToPhone},
    {0x10, Command::kRandomTransfer},
    {kCopyToCollection, Command::kCopyToCollection},
    {0x40, Command::kCalculateTempo},
    {kCancelAll, Command::kCancelAll},
    {0x100, Command::kEditAddToPlaylist},
    {kSelectAll, Command::kSelectAll},
    {kDeselectAll, Command::kDeselectAll},
    {kDelete, Command::kDelete},
    {0x1000, Command::kEditRefresh},
    {kPrevious, Command::kPrevious},
    {kPlayPause, Command::kPlayPause},
    {kNext, Command::kNext},
    {kCopy, Command::kCopy},
};
constexpr BitOfCommand kViews[] = {
    {kViewPhone, Command::kViewPhone},
    {kViewCollection, Command::kViewCollection},
    {kViewAllMusic, Command::kViewAllMusic},
    {kViewSelection, Command::kViewSelection},
};

int CommandOfMark(std::uint32_t value) {
    if (value >= kViewCd)
        return Command::kFirstCd + static_cast<int>(value - kViewCd);
    if (value & kPlayModeMask)
        return Command::kPlayModes[value / kPlayModeStep - 1];
    const auto* view = std::find_if(std::begin(kViews), std::end(kViews),
                                    [value](const auto& row) { return row.value == value; });
    return view == std::end(kViews) ? 0 : view->command;
}

/// When a bit is set, for lists of one type.
enum class When { Never, Any, AnyButPlaylists, AnyWithPhone, Tracks };

struct Rules {
    When createPlaylist = When::Never;
    When remove = When::Never;
    When convert = When::Never;
    When copy = When::Never;
    When toPhone = When::Never;
    When toCollection = When::Never;
};
constexpr Rules kNoCommands{};
constexpr Rules kPhone{
    .createPlaylist = When::Tracks, .copy = When::Any, .toCollection = When::Any};
constexpr Rules kCollection{.createPlaylist = When::Tracks,
                            .remove = When::Any,
                            .convert = When::AnyButPlaylists,
                            .copy = When::AnyWithPhone,
                            .toPhone = When::AnyWithPhone};
constexpr Rules kElsewhere{
    .copy = When::Any, .toPhone = When::AnyWithPhone, .toCollection = When::Any};

bool IsFromPhone(const CMediaList& list) {
    return list.m_iType == MEDIA_TYPE_PHONE ||
           (list.m_iType == MEDIA_TYPE_SELECTION && list.m_iSourceType == MEDIA_TYPE_PHONE);
}

const Rules& RulesOf(const CMediaList& list) {
    if (IsFromPhone(list))
        return kPhone;
    switch (list.m_iType) {
    case MEDIA_TYPE_COLLECTION:
        return kCollection;
    case MEDIA_TYPE_ALL:
    case MEDIA_TYPE_CD:
        return kElsewhere;
    default:
        return kNoCommands;
    }
}

/// Nothing for a list that leaves the mark as it is.
std::optional<std::uint32_t> ViewOf(const CMediaList& list) {
    switch (list.m_iType) {
    case MEDIA_TYPE_PHONE:
        return kViewPhone;
    case MEDIA_TYPE_COLLECTION:
        return kViewCollection;
    case MEDIA_TYPE_ALL:
        return kViewAllMusic;
    case MEDIA_TYPE_CD:
        return kViewCd + static_cast<std::uint32_t>(list.m_iMenuId - Command::kFirstCd);
    default:
        return std::nullopt;
    }
}

} // namespace

CCommandState::CCommandState(const CMediaLists& lists, const ITrackPlayer& player,
                             IStatusDisplay& status, ICommandDisplay& display)
    : m_lists(lists)
    , m_player(player)
    , m_status(status)
    , m_display(display)
    , m_dwUiState(kAtStart) {}

void CCommandState::UpdateCommands() {
    if (const CMediaList* list = m_lists.GetActiveList()) {
        const bool phone = m_lists.HasPhoneList();
        m_display.ShowCopyDirection(phone && !IsFromPhone(*list));
        SetListBits(*list, phone);
        MarkView(*list);
    }
    ShowSelected(m_lists.GetActiveList());
    UpdatePlayer();
    SetBit(kCancelAll, m_status.IsBusy());
    m_updated.Tell();
}

void CCommandState::ShowSelected(const CMediaList* list) {
    const int checked = list ? list->CountChecked(0) : 0;
    m_status.ShowLasting(
        IStatusDisplay::Lasting::Selected,
        checked == 0 ? QString()
                     : FormatText(LoadString(IDS_STATUS_SELECTED),
                                  {QString::number(checked), QString::number(list->GetCount())}));
}

/// The play button first: it takes over the focus from the others when they turn gray.
void CCommandState::UpdatePlayer() {
    const PlayerCommands player = m_player.GetCommands();
    SetBit(kPlayPause, player.canPlay);
    SetBit(kPrevious, player.canPrevious);
    SetBit(kNext, player.canNext);
    const auto mode = static_cast<std::uint32_t>(player.playMode + 1) * kPlayModeStep;
    if ((m_dwUiState & kPlayModeMask) != mode)
        SetField(kPlayModeMask, mode);
}

void CCommandState::MarkView(const CMediaList& list) {
    const auto view = ViewOf(list);
    if (view && list.IsOnScreen())
        SetField(kViewMask, *view);
}

void CCommandState::SetListBits(const CMediaList& list, bool phone) {
    const int checked = list.CountChecked(0);
    const int checkedTracks = checked > 0 ? list.CountChecked(1) : 0;
    const bool mixed = checkedTracks != checked;
    const auto holds = [&](When when) {
        switch (when) {
        case When::Any:
            return checked > 0;
        case When::AnyButPlaylists:
            return checked > 0 && !mixed;
        case When::AnyWithPhone:
            return checked > 0 && phone;
        case When::Tracks:
            return checkedTracks > 0 && !mixed && !g_bPlaylistOnly;
        default:
            return false;
        }
    };
    const Rules& rules = RulesOf(list);
    SetBit(kCreatePlaylist, holds(rules.createPlaylist));
    SetBit(kDelete, holds(rules.remove));
    SetBit(kConvert, holds(rules.convert));
    SetBit(kCopy, holds(rules.copy));
    SetBit(kCopyToPhone, holds(rules.toPhone));
    SetBit(kCopyToCollection, holds(rules.toCollection));
}

void CCommandState::ApplyUiState(std::uint32_t value) {
    for (const auto& [bit, command] : kBits)
        if (value == 0 || value == bit)
            m_display.EnableCommand(command, m_dwUiState & bit);
    if (value == 0) {
        const std::uint32_t view = m_dwUiState & kViewMask;
        m_display.MarkCommand(CommandOfMark(m_dwUiState & kPlayModeMask));
        m_display.MarkCommand(CommandOfMark(view == kViewCd ? view + m_iViewedCd : view));
    } else if (value & (kPlayModeMask | kViewMask)) {
        m_display.MarkCommand(CommandOfMark(value));
    }
}

void CCommandState::SetBit(std::uint32_t bit, bool set) {
    m_dwUiState = set ? m_dwUiState | bit : m_dwUiState & ~bit;
    ApplyUiState(bit);
}

void CCommandState::SetField(std::uint32_t mask, std::uint32_t value) {
    m_dwUiState = (m_dwUiState & ~mask) | (value & mask);
    if ((value & kViewMask) == kViewCd)
        m_iViewedCd = value - kViewCd;
    ApplyUiState(value);
}
