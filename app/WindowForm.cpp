#include "app/WindowForm.h"

#include "app/MainLayout.h"
#include "app/WindowPlacement.h"
#include "base/Language.h"
#include "base/Settings.h"
#include "library/Commands.h"
#include "skin/MenuBar.h"
#include "skin/Pictures.h"
#include "skin/SkinWnd.h"

#include <QScreen>

namespace {

/// How far the window may be larger than the work area, so that a frame can lie outside.
constexpr int kOverhang = 12;

constexpr FrameStyles kMiniStyle = FrameStyle::Fixed;

/// The frame's button between the two forms: its places.
constexpr int kMiniButtonX = 130;
constexpr int kNormalButtonX = 79;
constexpr int kFormButtonY = 1;

} // namespace

CWindowForm::CWindowForm(QWidget& window, CSkinWnd& skin, CMenuBar& menuBar, CMainLayout& layout)
    : m_window(window)
    , m_skin(skin)
    , m_menuBar(menuBar)
    , m_layout(layout) {
    m_skin.AddFrameButton(PictureId::MiniPlayer, Command::kMiniPlayer, kMiniButtonX, kFormButtonY,
                          LoadString(IDS_MAIN_MINI));
}

void CWindowForm::ReadSettings() {
    const CTrackDeckSettings& settings = GetSettings();
    const QRect workArea = m_window.screen()->availableGeometry();
    const WindowPlaces places =
        settings.m_bLoaded ? SavedPlaces(settings, workArea) : FirstRunPlaces(workArea);
    m_rcNormal = places.normal;
    m_rcMini = places.mini;
    m_bMiniMode = settings.m_bLoaded && settings.m_bMiniMode;
}

void CWindowForm::SaveSettings() {
    TakePlace();
    CTrackDeckSettings& settings = GetSettings();
    settings.m_bMiniMode = m_bMiniMode;
    settings.m_nMiniPosX = m_rcMini.x();
    settings.m_nMiniPosY = m_rcMini.y();
    settings.m_nMainPosX = m_rcNormal.x();
    settings.m_nMainPosY = m_rcNormal.y();
    settings.m_nMainSizeX = m_rcNormal.width();
    settings.m_nMainSizeY = m_rcNormal.height();
}

void CWindowForm::Place() {
    SetForm();
    MoveTo(m_bMiniMode ? m_rcMini : m_rcNormal);
    if (!m_bMiniMode && GetSettings().m_bMaximized)
        m_skin.Maximize();
}

/// Shows what the form of the window has, in the frame too.
void CWindowForm::SetForm() {
    m_menuBar.setVisible(!m_bMiniMode);
    m_layout.SetMiniMode(m_bMiniMode);
    if (m_bMiniMode) {
        m_skin.ChangeFrameButton(PictureId::NormalWindow, Command::kMiniPlayer, kNormalButtonX,
                                 kFormButtonY, LoadString(IDS_MAIN_NORMAL));
        m_window.setFixedSize(kMiniSize);
    } else {
        m_skin.ChangeFrameButton(PictureId::MiniPlayer, Command::kMiniPlayer, kMiniButtonX,
                                 kFormButtonY, LoadString(IDS_MAIN_MINI));
        const QSize largest = m_window.screen()->availableSize() + QSize(kOverhang, kOverhang);
        m_window.setMinimumSize(kSmallestSize);
        m_window.setMaximumSize(largest.expandedTo(m_rcNormal.size()));
    }
    m_skin.InstallSkin(&m_window, m_bMiniMode ? kMiniStyle : kNormalStyle);
}

void CWindowForm::Toggle() {
    // Wayland ends a program that sizes a window before the desktop has let go of it, which takes
    // its time. A hidden one is not the desktop's.
    const bool isDesktops = m_window.isMaximized() && IsPlacedByDesktop();
    if (isDesktops)
        m_window.hide();
    TakePlace();
    if (!m_bMiniMode)
        m_skin.Restore();
    m_bMiniMode = !m_bMiniMode;
    Place();
    if (isDesktops)
        m_window.show();
}

void CWindowForm::MoveTo(const QRect& place) {
    m_window.move(place.topLeft());
    m_window.resize(place.size());
}

/// Keeps where the window stands in the form that it has.
void CWindowForm::TakePlace() {
    if (m_bMiniMode) {
        m_rcMini.moveTo(m_window.pos());
        return;
    }
    GetSettings().m_bMaximized = m_skin.IsMaximized();
    if (!m_skin.IsMaximized())
        m_rcNormal = {m_window.pos(), m_window.size()};
}
