#include "library/ViewCommands.h"

#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/ITrackView.h"
#include "library/MediaLists.h"

#include <algorithm>
#include <memory>
#include <utility>

CViewCommands::CViewCommands(const CommandContext& context, CCommandMap& commands)
    : m_context(context) {
    for (const int command : {Command::kSelectAll, Command::kBodySelectAll})
        commands.On(command, [this](int) { CheckAll(1); });
    for (const int command : {Command::kDeselectAll, Command::kBodyDeselectAll})
        commands.On(command, [this](int) { CheckAll(0); });
    commands.On(Command::kViewCollection, [this](int) { ShowList(MEDIA_TYPE_COLLECTION); });
    commands.On(Command::kViewAllMusic, [this](int) { ShowList(MEDIA_TYPE_ALL); });
    commands.On(Command::kViewSelection, [this](int) { ShowSelection(); });
}

/// Unlike the active list it may be folded.
CMediaList* CViewCommands::ListUnderCursor() const {
    if (IsExclusiveView())
        return m_context.lists.GetActiveList();
    const auto& lists = m_context.lists.All();
    const auto found = std::find_if(lists.begin(), lists.end(), [](const auto& list) {
        return list->m_bVisible && list->m_bActive;
    });
    return found == lists.end() ? nullptr : found->get();
}

void CViewCommands::CheckAll(int checked) {
    CMediaList* list = ListUnderCursor();
    if (!list)
        return;
    for (int index = 0; index < list->GetCount(); ++index)
        (*list)[index]->m_bChecked = checked;
    m_context.view.RefreshChecks(*list);
    m_context.state.UpdateCommands();
}

void CViewCommands::ShowList(int type) {
    const CMediaList& list = *m_context.lists.FindListByType(type);
    m_context.view.ShowList(list.m_iId);
    m_context.state.MarkView(list);
    m_context.state.UpdateCommands();
}

/// Copies of the checked tracks of the active list.
void CViewCommands::ShowSelection() {
    const CMediaList* active = m_context.lists.GetActiveList();
    if (IsExclusiveView() || !active)
        return;
    CMediaList& selection = *m_context.lists.FindListByType(MEDIA_TYPE_SELECTION);
    m_context.player.ReleaseList(selection);
    selection.ClearAll();
    selection.m_iSourceType = active->m_iType;
    for (int index = 0; index < active->GetCount(); ++index) {
        if (!(*active)[index]->m_bChecked)
            continue;
        auto copy = std::make_unique<CTrackRecord>(*(*active)[index]);
        copy->m_bPlaying = copy->m_bRowSelected = 0;
        selection.Append(std::move(copy));
    }
    g_bSelectionOnly = 1;
    m_context.view.FillGrid();
    m_context.state.SetField(UiState::kViewMask, UiState::kViewSelection);
    m_context.state.UpdateCommands();
}
