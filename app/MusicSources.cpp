#include "app/MusicSources.h"

#include "app/CollectionFolder.h"
#include "base/FileKinds.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "dialogs/ScanPCDlg.h"
#include "dialogs/ScanningDlg.h"
#include "library/CommandMap.h"
#include "library/Commands.h"
#include "library/ITrackView.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "platform/Files.h"
#include "player/GstMediaGraph.h"
#include "player/Transport.h"

#include <QApplication>
#include <QDir>

CMusicSources::CMusicSources(QWidget& window, const CommandContext& context, CCommandMap& commands,
                             CTransport& transport)
    : m_window(window)
    , m_context(context)
    , m_transport(transport)
    , m_filling(context, commands, [this](const CMediaList& list) { return MayTakeOver(list); })
    , m_warmUp(context.scanner.OnDone([](const CMediaList& list, bool) {
        if (list.m_iType == MEDIA_TYPE_COLLECTION)
            CGstMediaGraphs::WarmUp();
    })) {
    commands.On(Command::kScan, [this](int) { OnScanPC(); });
}

void CMusicSources::CreateLists() {
    CMediaLists& lists = m_context.lists;
    const QString defaultFolder = MakeDefaultCollectionFolder();
    lists.Add(LoadString(IDS_TYPE_PLAYLIST), MEDIA_TYPE_PLAYLIST, 1).m_bVisible = 0;
    lists.Add(LoadString(IDS_TYPE_SELECT), MEDIA_TYPE_SELECTION, 1).m_bVisible = 0;
    const CMediaList& collection =
        lists.Add(LoadString(IDS_TYPE_COLLECT), MEDIA_TYPE_COLLECTION, 1);
    lists.Add(LoadString(IDS_TYPE_ALL), MEDIA_TYPE_ALL, 1);
    QString& folder = GetSettings().m_strMyCollectionLocation;
    folder = folder.isEmpty() ? defaultFolder : QDir::cleanPath(folder);
    MakeFolder(folder);
    lists.SetLocation(collection, folder);
    m_filling.Fill(collection);
}

void CMusicSources::OpenDocument(const QString& path) {
    const auto play = [this](CMediaList& list, int index) {
        m_context.view.ActivateList(list.m_iId); // the buttons are those of the active list
        Play(list, index);
    };
    if (m_context.scanner.IsInCollection(path))
        m_context.scanner.AutoPlay(path, play);
    else
        m_context.scanner.Add(*m_context.lists.FindListByType(MEDIA_TYPE_ALL), path, play);
}

void CMusicSources::Play(CMediaList& list, int index) {
    if (IsPlaylistFile(list[index]->m_strPath))
        m_transport.PlayPlaylist(list, index);
    else
        m_transport.PlayTrack(list, index);
}

/// Read in the background, My Collection leaves the buttons to a document that plays, and the
/// commands of a menu that is open to its list.
bool CMusicSources::MayTakeOver(const CMediaList& list) const {
    const CMediaList* playing = m_transport.GetPlayList();
    const bool othersPlay =
        m_transport.GetState() != TransportState::Stopped && playing && playing != &list;
    return list.m_iType == MEDIA_TYPE_COLLECTION && !othersPlay &&
           !QApplication::activePopupWidget();
}

void CMusicSources::OnScanPC() {
    CScanPCDlg options(&m_window);
    if (options.exec() != QDialog::Accepted || options.GetFolder().isEmpty())
        return;
    CMediaList* all = m_context.lists.FindListByType(MEDIA_TYPE_ALL);
    m_transport.ReleaseList(*all);
    all->ClearAll();
    all->m_bVisible = 1;
    all->m_bExpanded = 1;
    m_context.view.RefillSection(*all);
    CScanningDlg(m_context.scanner, {all->m_iId, options.GetFolder(), options.IsRecursive()},
                 &m_window)
        .exec();
}
