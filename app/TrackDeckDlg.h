#pragma once

#include "app/CommandBar.h"
#include "app/ContextMenus.h"
#include "app/MainLayout.h"
#include "app/MprisPlayer.h"
#include "app/PlayerPanel.h"
#include "app/TrackArtwork.h"
#include "base/IPlaybackGuard.h"
#include "base/IStatusDisplay.h"
#include "base/Listeners.h"
#include "dialogs/Prompts.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "library/Playlists.h"
#include "library/TrackCommands.h"
#include "library/TrackView.h"
#include "library/ViewCommands.h"
#include "platform/MessageTarget.h"
#include "player/GstMediaGraph.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "skin/BaseDlg.h"

#include <QRect>

#include <memory>
#include <vector>

class CMenuBar;
class CSplashScreenEx;

/// The main dialog, which is the program: it makes its parts, lays them out, connects them, and
/// closes them down.
///
/// Thread: interface thread. Workers reach it by messages alone.
class CTrackDeckDlg : public CBaseDlg, private IPlaybackGuard, private IStatusDisplay {
public:
    /// `openFile`: a document to open at start, or empty.
    explicit CTrackDeckDlg(QString openFile);
    ~CTrackDeckDlg() override;

    /// Comes to the front of all windows.
    void BringToFront();

    [[nodiscard]] const CMediaLists& GetLists() const { return m_lists; }

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void reject() override {} // the Escape key ends no program

private:
    void ReleaseFile(const QString& path) override { m_transport.ReleaseFile(path); }
    void ShowStatus(const QString& text) override;
    [[nodiscard]] CommandContext Context();

    void OnInitDialog();
    void ReadSettings();
    void ConnectMessages();
    void ConnectView();
    void ConnectCommands();
    void ShowSplash();
    void BuildFrame();
    void CreateLists();
    void OpenFile();
    void PlaceWindow();
    void SetForm();

    void OnPainted();
    void ConnectDesktop();
    void PostListsDone();
    void OnListDone(int type);
    void OnPlay(CMediaList& list, int index);
    void OnScanPC();
    void OnCustomizeView();
    void ToggleMiniMode();
    void OnAbout();
    void MoveTo(const QRect& place);
    void TakeNormalPlace();
    void SaveOnClose();

    // The window
    std::unique_ptr<CSplashScreenEx> m_pSplash; ///< while it is up
    QString m_strOpenFile;
    QString m_strTempFolder;
    int m_bMiniMode = 0;
    QRect m_rcNormal;
    QRect m_rcMini;

    // The music, and the table that shows it
    CMediaLists m_lists;
    CMenuBar* m_pMenuBar;
    MainLayout m_layout;
    CCommandMap m_commands;  ///< what is done for each item, key and button
    CommandBar m_commandBar; ///< those of the menu bar and the band
    CCommandState m_state;   ///< which of them can be given now
    CTrackView m_view;
    ContextMenus m_menus; ///< those of the rows
    PlayerPanel m_panel;
    std::vector<int> m_listsDone; ///< types of lists to show once an edit has ended

    // The player
    MessageTarget m_messages; ///< by which workers reach this thread
    GstMediaGraphs m_graphs;
    CMediaPlayer m_player;
    CTransport m_transport;
    CListening m_playerChanges;
    std::unique_ptr<MprisPlayer> m_pMpris; ///< none before the window was painted

    // What is done with the music
    TrackArtwork m_artwork;
    CLibraryScanner m_scanner;
    CPrompts m_prompts;
    CPlaylists m_playlists;
    CViewCommands m_viewCommands;   ///< select all, the views, refresh
    CTrackCommands m_trackCommands; ///< delete, genres
};
