#include "app/TrackDeckDlg.h"

#include "app/CollectionFolder.h"
#include "app/RowImages.h"
#include "app/WindowPlacement.h"
#include "base/FileKinds.h"
#include "base/Guard.h"
#include "base/Language.h"
#include "base/Messages.h"
#include "base/Settings.h"
#include "dialogs/AboutDlg.h"
#include "dialogs/Help.h"
#include "dialogs/ScanPCDlg.h"
#include "dialogs/ScanningDlg.h"
#include "dialogs/SetColumnDlg.h"
#include "dialogs/SplashScreenEx.h"
#include "grid/GridCtrl.h"
#include "library/Commands.h"
#include "library/ListMessages.h"
#include "library/TrackColumns.h"
#include "platform/Files.h"
#include "platform/ScratchFolder.h"
#include "skin/BitmapSlider.h"
#include "skin/MenuBar.h"
#include "skin/Pictures.h"
#include "skin/ProgressSlider.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QKeyEvent>
#include <QLayout>
#include <QScreen>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <memory>
#include <utility>

namespace {

/// How far the window may be larger than the work area, so that a frame can lie outside.
constexpr int kOverhang = 12;

constexpr int kFirstVolume = 70;

constexpr FrameStyles kNormalStyle =
    FrameStyle::Sizable | FrameStyle::MinimizeBox | FrameStyle::MaximizeBox;
constexpr FrameStyles kMiniStyle = FrameStyle::Fixed;

/// The frame's button between the two forms of the window: its command, and its places.
constexpr int kMiniButtonX = 130;
constexpr int kNormalButtonX = 79;
constexpr int kFormButtonY = 1;

/// How long scans wait for the window to be painted.
constexpr std::chrono::seconds kLongestHold(1);

} // namespace

CTrackDeckDlg::CTrackDeckDlg(QString openFile)
    : CBaseDlg(nullptr, kNormalStyle, Qt::Window)
    , m_strOpenFile(std::move(openFile))
    , m_pMenuBar(new CMenuBar(this))
    , m_layout(*this)
    , m_commandBar(*this, *m_pMenuBar, m_layout, m_commands)
    , m_state(m_lists, m_commandBar)
    , m_view(m_lists, m_layout.Grid(), *this)
    , m_menus(m_layout.Grid(), m_commands)
    , m_panel(*this, m_layout, m_state)
    , m_player([this] { return m_graphs.Make(); }, m_messages.Address(), m_panel)
    , m_transport(m_lists, m_player, m_view, m_panel)
    , m_artwork(m_lists, m_layout.Artwork(), m_transport)
    , m_scanner(m_lists)
    , m_prompts(*this)
    , m_playlists(Context(), m_commands)
    , m_viewCommands(Context(), m_commands, m_scanner)
    , m_trackCommands(Context(), m_commands) {
    // Scans start before the window is up; what they find waits until it has been painted.
    m_messages.SetHeld(true);
    Guarded("OnInitDialog()", [this] { OnInitDialog(); });
}

CTrackDeckDlg::~CTrackDeckDlg() {
    m_messages.SetHeld(true); // no message may come while the rest goes
    hide();                   // and an open edit ends while there is what stores it
}

/// What the commands work with, all of which is made before them.
CommandContext CTrackDeckDlg::Context() {
    return {m_lists, m_view, m_state, m_transport, m_prompts, *this, m_messages.Address()};
}

void CTrackDeckDlg::ShowStatus(const QString& text) {
    m_layout.Status().SetCaption(text);
}

void CTrackDeckDlg::OnInitDialog() {
    ShowSplash();
    BuildFrame();
    layout()->setMenuBar(m_pMenuBar);
    ConnectCommands();
    ConnectMessages();
    ConnectView();
    m_strTempFolder = MakeScratchFolder(QStringLiteral("VTD_CDMA"));
    ReadSettings();
    setWindowTitle(LoadString(IDS_MAIN_TITLE));
    m_layout.Volume().setValue(GetSettings().m_nVolume);
    setWindowIcon(MakeProgramIcon());
    CreateLists();
    const QList<QIcon> images = MakeRowImages();
    m_layout.Grid().SetImageList(images);
    m_view.FillGrid();
    OpenFile();
    m_state.ApplyUiState(0);
    PlaceWindow();
}

void CTrackDeckDlg::ReadSettings() {
    CTrackDeckSettings& settings = GetSettings();
    const QRect workArea = screen()->availableGeometry();
    if (!settings.m_bLoaded) {
        const WindowPlaces places = FirstRunPlaces(workArea);
        m_rcNormal = places.normal;
        m_rcMini = places.mini;
        settings.m_nVolume = kFirstVolume;
        return;
    }
    const WindowPlaces places = SavedPlaces(settings, workArea);
    m_rcNormal = places.normal;
    m_rcMini = places.mini;
    m_bMiniMode = settings.m_bMiniMode;
    if (settings.m_iPlaymode >= 0 && settings.m_iPlaymode <= 3)
        m_transport.SetPlayMode(settings.m_iPlaymode);
    m_view.SetColumns(static_cast<unsigned>(settings.m_dwColumnDef));
}

void CTrackDeckDlg::ConnectMessages() {
    m_messages.On(WM_TD_ADD_TRACK,
                  [this](Message& message) { return m_scanner.OnAddTrack(message); });
    m_messages.On(WM_TD_LIST_DONE, [this](const Message& message) {
        OnListDone(static_cast<int>(message.wParam));
        return 0;
    });
    m_transport.Listen(m_messages);
}

void CTrackDeckDlg::ConnectView() {
    m_layout.Grid().SetNotifyHandler([this](GridNotification& notification) {
        Guarded("OnNotify()", [&] {
            m_view.OnNotify(notification);
            m_state.UpdateCommands();
        });
        if (notification.code == GVN_ENDLABELEDIT)
            PostListsDone();
    });
    m_view.SetCurrentTrackHandler(
        [this](const CMediaList& list, int index) { m_artwork.ShowTrack(list, index); });
    m_view.SetPlayHandler([this](CMediaList& list, int index) { OnPlay(list, index); });
    m_view.SetMenuHandler([this](CCellID cell, const CMediaList* list, int index) {
        if (list)
            m_menus.ShowRowMenu(cell, *list, index);
        else
            m_menus.ShowHeaderMenu(cell, m_view.GetColumns());
    });
    m_playlists.SetViewHandler([this] { m_commandBar.ShowOpenPlaylist(g_bPlaylistOnly); });
    m_state.SetUpdateHandler([this] { m_transport.UpdateTransport(); });
}

/// The commands of the window itself; its parts have taken theirs.
void CTrackDeckDlg::ConnectCommands() {
    using namespace Command;
    m_commands.SetBeforeHandler([this](int command) {
        // What is being typed is kept: all others may build the rows anew.
        if (command != kSelectAll && command != kPlayPause && command != kPrevious &&
            command != kNext)
            m_layout.Grid().EndEdit();
    });
    m_panel.Connect(m_player, m_transport, m_commands);
    m_commands.On(kScan, [this](int) { OnScanPC(); });
    m_commands.On(kExit, [this](int) { close(); });
    m_commands.On(kHelp, [this](int) { OpenHelp(IDS_HELPDOC_TRACKDK, this); });
    m_commands.On(kAbout, [this](int) { OnAbout(); });
    m_commands.On(kMiniPlayer, [this](int) { ToggleMiniMode(); });
    m_commands.On(kBodyPlay, [this](int) { m_view.PlayCurrent(); });
    m_commands.On(kBodyRename, [this](int) { m_view.EditClickedCell(); });
    for (const TrackColumn& column : AllTrackColumns())
        m_commands.On(column.command, [this](int command) { m_view.ToggleColumn(command); });
    for (const int command : {kCustomizeView, kHeaderCustomize})
        m_commands.On(command, [this](int) { OnCustomizeView(); });
    m_commandBar.Build();
}

void CTrackDeckDlg::ShowSplash() {
    m_pSplash = std::make_unique<CSplashScreenEx>(nullptr, QString());
    if (m_pSplash->SetBitmap(PictureId::Splash, QColor(255, 0, 255)))
        m_pSplash->Show();
}

void CTrackDeckDlg::BuildFrame() {
    m_skin.AddFrameButton(PictureId::MiniPlayer, Command::kMiniPlayer, kMiniButtonX, kFormButtonY,
                          LoadString(IDS_MAIN_MINI));
    m_skin.SetCommandHandler([this](int command) { m_commands.Run(command); });
    m_skin.SetFrameTips(LoadString(IDS_MAIN_MIN), LoadString(IDS_MAIN_MAX),
                        LoadString(IDS_MAIN_RESTOR), LoadString(IDS_MAIN_CLOSE));
    const QString about = LoadString(IDS_SYS_ABOUTTRACKDECK);
    if (about.isEmpty())
        return;
    auto* action = new QAction(about, this);
    connect(action, &QAction::triggered, this, &CTrackDeckDlg::OnAbout);
    m_skin.AppendToSystemMenu(action);
}

void CTrackDeckDlg::CreateLists() {
    const QString defaultFolder = MakeDefaultCollectionFolder();
    m_lists.Add(LoadString(IDS_TYPE_PLAYLIST), MEDIA_TYPE_PLAYLIST, 1).m_bVisible = 0;
    m_lists.Add(LoadString(IDS_TYPE_SELECT), MEDIA_TYPE_SELECTION, 1).m_bVisible = 0;
    const CMediaList& collection =
        m_lists.Add(LoadString(IDS_TYPE_COLLECT), MEDIA_TYPE_COLLECTION, 1);
    QString& folder = GetSettings().m_strMyCollectionLocation;
    folder = folder.isEmpty() ? defaultFolder : QDir::cleanPath(folder);
    MakeFolder(folder);
    m_pSplash.reset();
    m_lists.SetLocation(collection, folder);
    ShowStatus(LoadString(IDS_SCAN_ING));
    m_scanner.ScanList(m_messages.Address(), MEDIA_TYPE_COLLECTION, collection.m_iId, folder);
    m_lists.Add(LoadString(IDS_TYPE_ALL), MEDIA_TYPE_ALL, 1);
}

/// A document opened from outside starts the program as a mini player, which plays it. One of My
/// Collection is found by its scan.
void CTrackDeckDlg::OpenFile() {
    if (m_strOpenFile.isEmpty())
        return;
    m_bMiniMode = 1;
    const auto play = [this](CMediaList& list, int index) {
        m_view.ActivateList(list.m_iId); // the buttons are those of the active list
        OnPlay(list, index);
    };
    if (m_scanner.IsInCollection(m_strOpenFile)) {
        m_scanner.AutoPlay(m_strOpenFile, play);
        return;
    }
    CMediaList& all = *m_lists.FindListByType(MEDIA_TYPE_ALL);
    SendAddTrack(m_messages.Address(), all, m_strOpenFile);
    SendListDone(m_messages.Address(), MEDIA_TYPE_ALL);
    play(all, all.GetCount() - 1);
}

void CTrackDeckDlg::PlaceWindow() {
    SetForm();
    if (m_bMiniMode) {
        MoveTo(m_rcMini);
        return;
    }
    MoveTo(m_rcNormal);
    if (GetSettings().m_bMaximized)
        m_skin.Maximize();
}

/// Shows what the form of the window has, in the frame too.
void CTrackDeckDlg::SetForm() {
    m_pMenuBar->setVisible(!m_bMiniMode);
    m_layout.SetMiniMode(m_bMiniMode != 0);
    if (m_bMiniMode) {
        m_skin.ChangeFrameButton(PictureId::NormalWindow, Command::kMiniPlayer, kNormalButtonX,
                                 kFormButtonY, LoadString(IDS_MAIN_NORMAL));
        setFixedSize(kMiniSize);
    } else {
        m_skin.ChangeFrameButton(PictureId::MiniPlayer, Command::kMiniPlayer, kMiniButtonX,
                                 kFormButtonY, LoadString(IDS_MAIN_MINI));
        const QSize largest = screen()->availableSize() + QSize(kOverhang, kOverhang);
        setMinimumSize(kSmallestSize);
        setMaximumSize(largest.expandedTo(m_rcNormal.size()));
    }
    m_skin.InstallSkin(this, m_bMiniMode ? kMiniStyle : kNormalStyle);
}

bool CTrackDeckDlg::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::Paint)
        OnPainted();
    else if (event->type() == QEvent::Show) // a window that nothing is seen of is never painted
        QTimer::singleShot(kLongestHold, this, [this] { OnPainted(); });
    return handled;
}

/// What could wait until the window was seen.
void CTrackDeckDlg::OnPainted() {
    m_messages.SetHeld(false);
    if (!m_pMpris)
        ConnectDesktop();
}

/// Puts the player within reach of the desktop's media controls.
void CTrackDeckDlg::ConnectDesktop() {
    CBitmapSlider& volume = m_layout.Volume();
    m_pMpris = std::make_unique<MprisPlayer>(
        m_transport, m_player,
        MprisWindow{[this] { BringToFront(); }, [this] { close(); },
                    [&volume] { return volume.value(); },
                    [&volume](int position) { volume.setValue(position); }},
        m_strTempFolder);
    m_transport.SetChangeHandler([this] { m_pMpris->Update(); });
    m_player.SetSeekHandler([this](std::int64_t position) { m_pMpris->OnSeek(position); });
    connect(&volume, &QAbstractSlider::valueChanged, this, [this] { m_pMpris->Update(); });
    m_pMpris->Start();
}

/// Lists that became ready in the middle of an edit.
void CTrackDeckDlg::PostListsDone() {
    for (const int type : std::exchange(m_listsDone, {}))
        m_messages.Address().Post({WM_TD_LIST_DONE, type});
}

void CTrackDeckDlg::OnListDone(int type) {
    if (m_layout.Grid().IsEditing()) { // rows built anew would end what is being typed half-way
        m_listsDone.push_back(type);
        return;
    }
    m_scanner.OnListDone(type);
    // Read in the background, the collection leaves the buttons to a document that plays, and the
    // commands of a menu that is open to its list.
    const bool othersPlay = m_transport.GetState() != TransportState::Stopped &&
                            m_transport.GetPlayList()->m_iType != type;
    const bool isFree = !othersPlay && !QApplication::activePopupWidget();
    if (type == MEDIA_TYPE_ALL || (type == MEDIA_TYPE_COLLECTION && isFree)) {
        m_view.ActivateList(m_lists.FindListByType(type)->m_iId);
        m_state.MarkView(*m_lists.FindListByType(type));
    }
    m_view.FillGrid();
    if (type == MEDIA_TYPE_ALL) {
        m_view.ScrollToList(m_lists.FindListByType(type)->m_iId);
        m_state.SetBit(UiState::kScan, true);
    }
    if (!g_bPlaylistOnly) // whose name stands there
        ShowStatus(QString());
    m_transport.RenewQueue();
    m_state.UpdateCommands();
    if (type == MEDIA_TYPE_COLLECTION)
        GstMediaGraphs::WarmUp();
}

void CTrackDeckDlg::OnPlay(CMediaList& list, int index) {
    if (IsPlaylistFile(list[index]->m_strPath))
        m_transport.PlayPlaylist(list, index);
    else
        m_transport.PlayTrack(list, index);
}

void CTrackDeckDlg::OnScanPC() {
    CScanPCDlg options(this);
    if (options.exec() != QDialog::Accepted || options.GetFolder().isEmpty())
        return;
    CMediaList* all = m_lists.FindListByType(MEDIA_TYPE_ALL);
    m_transport.ReleaseList(*all);
    all->ClearAll();
    all->m_bVisible = 1;
    all->m_bExpanded = 1;
    // Not again before all that this scan found has come in.
    m_state.SetBit(UiState::kScan, false);
    CScanningDlg scanning(
        m_scanner, {m_messages.Address(), all->m_iId, options.GetFolder(), options.IsRecursive()},
        this);
    scanning.exec();
}

void CTrackDeckDlg::OnCustomizeView() {
    CSetColumnDlg columns(m_view.GetColumns(), this);
    if (columns.exec() != QDialog::Accepted)
        return;
    m_view.SetColumns(columns.GetColumns());
    m_view.FillGrid();
}

void CTrackDeckDlg::ToggleMiniMode() {
    // Wayland ends a program that sizes a window before the desktop has let go of it, which takes
    // its time. A hidden one is not the desktop's.
    const bool isDesktops = isMaximized() && IsPlacedByDesktop();
    if (isDesktops)
        hide();
    if (m_bMiniMode) {
        m_rcMini.moveTo(pos());
    } else {
        TakeNormalPlace();
        m_skin.Restore();
    }
    m_bMiniMode = !m_bMiniMode;
    PlaceWindow();
    if (isDesktops)
        show();
}

void CTrackDeckDlg::OnAbout() {
    CAboutDlg(this).exec();
}

void CTrackDeckDlg::MoveTo(const QRect& place) {
    move(place.topLeft());
    resize(place.size());
}

/// Keeps where the window stands in its normal form.
void CTrackDeckDlg::TakeNormalPlace() {
    GetSettings().m_bMaximized = m_skin.IsMaximized();
    if (!m_skin.IsMaximized())
        m_rcNormal = {pos(), size()};
}

void CTrackDeckDlg::BringToFront() {
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

void CTrackDeckDlg::closeEvent(QCloseEvent* event) {
    SaveOnClose();
    event->accept();
    QCoreApplication::quit();
}

/// Takes what the grid leaves to it. No more: a dialog would press its first button for Enter,
/// wherever the focus is.
void CTrackDeckDlg::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Delete) && m_layout.Grid().isVisible()) {
        // Also where the menu has it in gray: it takes tracks out of the open playlist.
        m_commands.Run(Command::kDelete);
        return;
    }
    event->setAccepted(m_layout.Grid().hasFocus() &&
                       m_view.OnKey(event->key(), event->modifiers()));
    m_state.UpdateCommands();
}

void CTrackDeckDlg::SaveOnClose() {
    if (m_bMiniMode)
        m_rcMini.moveTo(pos());
    else
        TakeNormalPlace();
    CTrackDeckSettings& settings = GetSettings();
    settings.m_bMiniMode = m_bMiniMode;
    settings.m_nMiniPosX = m_rcMini.x();
    settings.m_nMiniPosY = m_rcMini.y();
    settings.m_nMainPosX = m_rcNormal.x();
    settings.m_nMainPosY = m_rcNormal.y();
    settings.m_nMainSizeX = m_rcNormal.width();
    settings.m_nMainSizeY = m_rcNormal.height();
    settings.m_iPlaymode = m_transport.GetPlayMode();
    settings.m_nVolume = m_layout.Volume().value();
    settings.m_dwColumnDef = static_cast<int>(m_view.GetColumns());
    SaveSettings();
}
