#pragma once

#include "app/CommandBar.h"
#include "app/ContextMenus.h"
#include "app/MainLayout.h"
#include "app/MprisPlayer.h"
#include "app/MusicSources.h"
#include "app/PlayerPanel.h"
#include "app/StatusLine.h"
#include "app/TrackArtwork.h"
#include "app/WindowForm.h"
#include "base/Listeners.h"
#include "dialogs/Prompts.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "library/Playlists.h"
#include "library/TrackCommands.h"
#include "library/ViewCommands.h"
#include "platform/MessageTarget.h"
#include "platform/Worker.h"
#include "player/GstMediaGraph.h"
#include "player/MediaPlayer.h"
#include "player/Transport.h"
#include "skin/BaseDlg.h"
#include "view/TrackView.h"

#include <memory>
#include <vector>

class CMenuBar;
class CSplashScreenEx;

/// The main dialog, which is the program: it makes its parts, lays them out, connects them, and
/// closes them down.
///
/// Thread: interface thread. Workers reach it by messages alone.
class CTrackDeckDlg : public CBaseDlg {
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
    [[nodiscard]] CommandContext Context();

    void OnInitDialog();
    void ReadSettings();
    void ConnectView();
    void ConnectCommands();
    void ShowSplash();
    void BuildFrame();
    void OnPainted();
    void ConnectDesktop();
    void OnCustomizeView();
    void OnAbout();
    void SaveOnClose();

    // The window
    std::unique_ptr<CSplashScreenEx> m_pSplash; ///< while it is up
    QString m_strOpenFile;
    QString m_strTempFolder;
    CMenuBar* m_pMenuBar;
    CMainLayout m_layout;
    CWindowForm m_form;
    CStatusLine m_status;

    // The music, and the table that shows it
    CMediaLists m_lists;
    CCommandMap m_commands;   ///< what is done for each item, key and button
    CCommandBar m_commandBar; ///< those of the menu bar and the band
    CTrackView m_view;
    CContextMenus m_menus; ///< those of the rows
    CPlayerPanel m_panel;

    // The player
    CMessageTarget m_messages; ///< by which workers reach this thread
    CGstMediaGraphs m_graphs;
    CMediaPlayer m_player;
    CTransport m_transport;
    std::unique_ptr<CMprisPlayer> m_pMpris; ///< none before the window was painted

    // What is done with the music
    CCommandState m_state; ///< which commands can be given now
    CLibraryScanner m_scanner;
    CWorker m_writer; ///< of tags and artwork
    CTrackArtwork m_artwork;
    CPrompts m_prompts;
    CPlaylists m_playlists;
    CViewCommands m_viewCommands;   ///< select all, the views
    CTrackCommands m_trackCommands; ///< delete, edits, genres
    CMusicSources m_sources;        ///< the lists, and what fills them
    std::vector<CListening> m_listenings;
};
