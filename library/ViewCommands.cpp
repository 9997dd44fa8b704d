#include "library/ViewCommands.h"

#include "base/IStatusDisplay.h"
#include "base/Language.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/ITrackView.h"
#include "library/LibraryScanner.h"
#include "library/ListMessages.h"
#include "library/MediaLists.h"

#include <QStringList>

#include <algorithm>

CViewCommands::CViewCommands(const CommandContext& context, CCommandMap& commands,
                             CLibraryScanner& scanner)
    : m_context(context)
    , m_scanner(scanner) {
    for (const int command : {Command::kSelectAll, Command::kBodySelectAll})
        commands.On(command, [this](int) { CheckAll(1); });
    for (const int command : {Command::kDeselectAll, Command::kBodyDeselectAll})
        commands.On(command, [this](int) { CheckAll(0); });
    commands.On(Command::kViewCollection, [this](int) { ShowList(MEDIA_TYPE_COLLECTION); });
    commands.On(Command::kViewAllMusic, [this](int) { ShowList(MEDIA_TYPE_ALL); });
    commands.On(Command::kViewSelection, [this](int) { ShowSelection(); });
    commands.On(Command::kTitleRefresh, [this](int) { Refresh(); });
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

/// The tags are read once more: the selection holds copies.
void CViewCommands::ShowSelection() {
    const CMediaList* active = m_context.lists.GetActiveList();
    if (IsExclusiveView() || !active)
        return;
    QStringList checked;
    for (int index = 0; index < active->GetCount(); ++index)
        if ((*active)[index]->m_bChecked)
            checked += (*active)[index]->m_strPath;
    CMediaList& selection = *m_context.lists.FindListByType(MEDIA_TYPE_SELECTION);
    m_context.player.ReleaseList(selection);
    selection.ClearAll();
    selection.m_iSourceType = active->m_iType;
    g_bSelectionOnly = 1;
    for (const QString& path : checked)
        SendAddTrack(m_context.messages, selection, path, 1);
    SendListDone(m_context.messages, MEDIA_TYPE_SELECTION);
    m_context.state.SetField(UiState::kViewMask, UiState::kViewSelection);
}

void CViewCommands::Refresh() {
    CMediaList* list = ListUnderCursor();
    if (!list || list->m_iType != MEDIA_TYPE_COLLECTION || m_scanner.IsScanning(list->m_iType))
        return;
    m_context.player.ReleaseList(*list);
    list->ClearAll();
    list->m_bVisible = 1;
    list->m_bExpanded = 1;
    m_context.view.FillGrid();
    m_context.state.UpdateCommands();
    m_context.status.ShowStatus(LoadString(IDS_SCAN_ING));
    m_scanner.ScanList(m_context.messages, list->m_iType, list->m_iId,
                       m_context.lists.GetLocation(list->m_iId));
}
