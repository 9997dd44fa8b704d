#include "app/TrackDeckDlg.h"

#include "app/RowImages.h"
#include "base/Guard.h"
#include "base/IPrompts.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "dialogs/AboutDlg.h"
#include "dialogs/Help.h"
#include "dialogs/SetColumnDlg.h"
#include "dialogs/SplashScreenEx.h"
#include "grid/GridCtrl.h"
#include "library/Commands.h"
#include "library/TrackColumns.h"
#include "platform/ScratchFolder.h"
#include "skin/BitmapSlider.h"
#include "skin/MenuBar.h"
#include "skin/Pictures.h"
#include "skin/ProgressSlider.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <memory>
#include <utility>

namespace {

constexpr int kFirstVolume = 70;

/// How long scans wait for the window to be painted.
constexpr std::chrono::seconds kLongestHold(1);

} // namespace

CTrackDeckDlg::CTrackDeckDlg(QString openFile)
    : CBaseDlg(nullptr, kNormalStyle, Qt::Window)
    , m_strOpenFile(std::move(openFile))
    , m_pMenuBar(new CMenuBar(this))
    , m_layout(*this)
    , m_form(*this, m_skin, *m_pMenuBar, m_layout)
    , m_status(m_layout.Status())
    , m_commandBar(*this, *m_pMenuBar, m_layout, m_commands)
    , m_view(m_lists, m_layout.Grid())
    , m_menus(m_layout.Grid(), m_commands)
    , m_panel(*this, m_layout)
    , m_player([this] { return m_graphs.Make(); }, m_messages.Address(), m_panel)
    , m_transport(m_lists, m_player, m_view, m_panel)
    , m_state(m_lists, m_transport, m_status, m_commandBar)
    , m_scanner(m_lists)
    , m_writer("writer", CWorker::AtEnd::Finish)
    , m_artwork(m_lists, m_layout.Artwork(), m_writer, m_status)
    , m_prompts(*this)
    , m_playlists(Context(), m_commands)
    , m_viewCommands(Context(), m_commands)
    , m_trackCommands(Context(), m_commands)
    , m_sources(*this, Context(), m_commands, m_transport) {
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
    return {m_lists, m_view, m_state, m_transport, m_prompts, m_status, m_scanner, m_writer};
}

void CTrackDeckDlg::OnInitDialog() {
    ShowSplash();
    BuildFrame();
    layout()->setMenuBar(m_pMenuBar);
    ConnectCommands();
    m_scanner.Listen(m_messages);
    m_transport.Listen(m_messages);
    ConnectView();
    m_strTempFolder = MakeScratchFolder(QStringLiteral("VTD_CDMA"));
    ReadSettings();
    setWindowTitle(LoadString(IDS_MAIN_TITLE));
    m_layout.Volume().setValue(GetSettings().m_nVolume);
    setWindowIcon(MakeProgramIcon());
    m_sources.CreateLists();
    m_pSplash.reset();
    m_layout.Grid().SetImageList(MakeRowImages());
    m_view.FillGrid();
    if (!m_strOpenFile.isEmpty()) {
        m_form.SetMiniMode(true);
        m_sources.OpenDocument(m_strOpenFile);
    }
    m_state.UpdateCommands();
    m_state.ApplyUiState(0);
    m_form.Place();
}

void CTrackDeckDlg::ReadSettings() {
    CTrackDeckSettings& settings = GetSettings();
    m_form.ReadSettings();
    if (!settings.m_bLoaded) {
        settings.m_nVolume = kFirstVolume;
        return;
    }
    if (settings.m_iPlaymode >= 0 && settings.m_iPlaymode <= 3)
        m_transport.SetPlayMode(settings.m_iPlaymode);
    m_view.SetColumns(static_cast<unsigned>(settings.m_dwColumnDef));
}

void CTrackDeckDlg::ConnectView() {
    m_layout.Grid().SetNotifyHandler([this](GridNotification& notification) {
        Guarded("OnNotify()", [&] {
            m_view.OnNotify(notification);
            m_state.UpdateCommands();
        });
    });
    m_listenings = {
        m_view.OnCurrentTrack(
            [this](const CMediaList& list, int index) { m_artwork.ShowTrack(list, index); }),
        m_view.OnPlay([this](CMediaList& list, int index) { m_sources.Play(list, index); }),
        m_view.OnTyped(
            [this](const CMediaList& list, int index, TrackText text, const QString& typed) {
                m_trackCommands.StoreText(list, index, text, typed);
            }),
        m_view.OnMenu([this](CCellID cell, const CMediaList* list, int index) {
            if (list)
                m_menus.ShowRowMenu(cell, *list, index);
            else
                m_menus.ShowHeaderMenu(cell, m_view.GetColumns());
        }),
        m_playlists.OnViewChanged([this] { m_commandBar.ShowOpenPlaylist(g_bPlaylistOnly); }),
        m_status.OnBusyChanged([this] { m_state.UpdateCommands(); }),
        m_state.OnUpdated([this] { m_transport.UpdateTransport(); }),
        m_transport.OnChange([this] { m_state.UpdatePlayer(); }),
    };
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
    m_commands.On(kExit, [this](int) { close(); });
    m_commands.On(kHelp, [this](int) { OpenHelp(IDS_HELPDOC_TRACKDK, this); });
    m_commands.On(kAbout, [this](int) { OnAbout(); });
    m_commands.On(kMiniPlayer, [this](int) { m_form.Toggle(); });
    for (const int command : {kCancelAll, kBodyCancel})
        m_commands.On(command, [this](int) {
            if (m_prompts.Confirm(LoadString(IDS_STOP_CONFIRMATION)))
                m_status.CancelOperations();
        });
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
    m_pMpris = std::make_unique<CMprisPlayer>(
        m_transport, m_player,
        MprisWindow{[this] { BringToFront(); }, [this] { close(); },
                    [&volume] { return volume.value(); },
                    [&volume](int position) { volume.setValue(position); }},
        m_strTempFolder);
    connect(&volume, &QAbstractSlider::valueChanged, this, [this] { m_pMpris->Update(); });
    m_pMpris->Start();
}

void CTrackDeckDlg::OnCustomizeView() {
    CSetColumnDlg columns(m_view.GetColumns(), this);
    if (columns.exec() != QDialog::Accepted)
        return;
    m_view.SetColumns(columns.GetColumns());
    m_view.FillGrid();
}

void CTrackDeckDlg::OnAbout() {
    CAboutDlg(this).exec();
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
    m_form.SaveSettings();
    CTrackDeckSettings& settings = GetSettings();
    settings.m_iPlaymode = m_transport.GetPlayMode();
    settings.m_nVolume = m_layout.Volume().value();
    settings.m_dwColumnDef = static_cast<int>(m_view.GetColumns());
    SaveSettings();
}
