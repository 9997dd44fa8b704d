#include "library/ListFilling.h"

#include "base/Language.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/ITrackView.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// A scan that ends sooner shows nothing before its end.
constexpr auto kShortScan = 1s;

/// Showing some tracks leaves the thread free for so many times what it took, with the painting
/// that follows guessed at.
constexpr int kShare = 20;
constexpr auto kPainting = 10ms;

} // namespace

CListFilling::CListFilling(const CommandContext& context, CCommandMap& commands,
                           std::function<bool(const CMediaList& list)> mayTakeOver)
    : m_context(context)
    , m_pfnMayTakeOver(std::move(mayTakeOver)) {
    CLibraryScanner& scanner = context.scanner;
    m_listenings = {
        scanner.OnFound([this](const CMediaList& list, int first) { OnFound(list, first); }),
        scanner.OnRead([this](const CMediaList& list, const std::vector<int>& indices) {
            for (const int index : indices)
                m_context.view.RefreshRows(1, &list, index);
        }),
        scanner.OnDone([this](const CMediaList& list, bool isWhole) { OnDone(list, isWhole); }),
        context.lists.OnRemoving([this](const CMediaList& list) { m_fillings.erase(list.m_iId); }),
    };
    m_timer.setSingleShot(true);
    m_timer.callOnTimeout(&m_timer, [this] { ShowSome(); });
    commands.On(Command::kTitleRefresh, [this](int) { Refresh(); });
}

void CListFilling::Fill(const CMediaList& list) {
    const int listId = list.m_iId;
    m_context.scanner.ScanList(list, m_context.lists.GetLocation(listId));
    Filling& filling = m_fillings[listId] = {};
    filling.begin = Clock::now();
    filling.operation = m_context.status.BeginOperation(
        LoadString(IDS_SCAN_ING), [this, listId] { m_context.scanner.Cancel(listId); });
}

/// A list that others have begun to fill, or a single track, is shown in the same way.
void CListFilling::OnFound(const CMediaList& list, int first) {
    if (!m_context.scanner.IsScanning(list.m_iId)) {
        m_context.view.OnTracksAppended(list, first);
        m_context.state.UpdateCommands();
        return;
    }
    const auto [filling, isNew] = m_fillings.try_emplace(list.m_iId);
    if (isNew)
        filling->second = {first, Clock::now(), nullptr};
    if (!m_timer.isActive())
        ShowSome();
}

/// Shows what may be shown now, and comes again for the rest: a disk may bring nothing more for
/// long.
void CListFilling::ShowSome() {
    std::optional<Clock::time_point> again;
    for (auto& [listId, filling] : m_fillings) {
        const CMediaList* list = m_context.lists.FindListById(listId);
        if (!list || filling.shown >= list->GetCount())
            continue;
        const auto when = std::max(filling.begin + kShortScan, m_next);
        if (Clock::now() >= when)
            Show(*list, filling);
        else
            again = std::min(again.value_or(when), when);
    }
    if (again)
        m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(*again - Clock::now()));
}

void CListFilling::Show(const CMediaList& list, Filling& filling) {
    const auto begin = Clock::now();
    m_context.view.OnTracksAppended(list, filling.shown);
    filling.shown = list.GetCount();
    const auto end = Clock::now();
    m_next = end + kShare * (end - begin + kPainting);
}

void CListFilling::OnDone(const CMediaList& list, bool isWhole) {
    if (list.m_iType == MEDIA_TYPE_ALL || m_pfnMayTakeOver(list)) {
        m_context.view.ActivateList(list.m_iId);
        m_context.state.MarkView(list);
    }
    const auto filling = m_fillings.extract(list.m_iId);
    const int shown = filling ? filling.mapped().shown : 0;
    if (shown < list.GetCount())
        m_context.view.OnTracksAppended(list, shown);
    m_context.view.FitColumns();
    if (list.m_iType == MEDIA_TYPE_ALL)
        m_context.view.ScrollToList(list.m_iId);
    if (!isWhole)
        m_context.status.ShowNews(LoadString(IDS_SCAN_CANCELED));
    m_context.player.RenewQueue();
    m_context.state.UpdateCommands();
}

/// Reads My Collection anew.
void CListFilling::Refresh() {
    CMediaList* list = m_context.lists.FindListByType(MEDIA_TYPE_COLLECTION);
    if (!list->m_bActive || IsExclusiveView() || m_context.scanner.IsScanning(list->m_iId))
        return;
    m_context.player.ReleaseList(*list);
    list->ClearAll();
    list->m_bVisible = 1;
    list->m_bExpanded = 1;
    m_context.view.RefillSection(*list);
    Fill(*list);
    m_context.state.UpdateCommands();
}
