#include "skin/SkinWnd.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

// What the mouse does to a frame, and the system menu.

namespace {

/// A part of the frame by which a window is sized.
struct Grip {
    int hit;
    Qt::Edges edges;
    Qt::CursorShape cursor;
};
const Grip kGrips[] = {
    {FrameHit::Left, Qt::LeftEdge, Qt::SizeHorCursor},
    {FrameHit::Right, Qt::RightEdge, Qt::SizeHorCursor},
    {FrameHit::Top, Qt::TopEdge, Qt::SizeVerCursor},
    {FrameHit::Bottom, Qt::BottomEdge, Qt::SizeVerCursor},
    {FrameHit::TopLeft, Qt::TopEdge | Qt::LeftEdge, Qt::SizeFDiagCursor},
    {FrameHit::TopRight, Qt::TopEdge | Qt::RightEdge, Qt::SizeBDiagCursor},
    {FrameHit::BottomLeft, Qt::BottomEdge | Qt::LeftEdge, Qt::SizeBDiagCursor},
    {FrameHit::BottomRight, Qt::BottomEdge | Qt::RightEdge, Qt::SizeFDiagCursor},
};

/// Null for other parts.
const Grip* FindGrip(int hit) {
    const auto* grip = std::find_if(std::begin(kGrips), std::end(kGrips),
                                    [hit](const Grip& one) { return one.hit == hit; });
    return grip == std::end(kGrips) ? nullptr : grip;
}

} // namespace

int CSkinWnd::HitAt(QPointF place) const {
    const QPointF pixel = place * m_theme->scale;
    return HitTest(
        *m_theme, m_frame,
        {static_cast<int>(std::floor(pixel.x())), static_cast<int>(std::floor(pixel.y()))});
}

bool CSkinWnd::OnMouseMove(QPointF place, bool held) {
    if (held && StartHeld())
        return true;
    const int hit = HitAt(place);
    if (hit == FrameHit::Client) {
        if (!held)
            m_hWnd->unsetCursor();
        return false;
    }
    m_frame.m_nHoverHit = hit;
    m_frame.m_nPressedHit = FrameHit::Nowhere;
    if (hit != m_nLastHit) {
        m_nLastHit = hit;
        Refresh();
    }
    const Grip* grip = FindGrip(hit);
    m_hWnd->setCursor(grip ? grip->cursor : Qt::ArrowCursor);
    return true;
}

bool CSkinWnd::OnMousePress(const QMouseEvent& event) {
    const int hit = HitAt(event.position());
    if (hit == FrameHit::Client)
        return false;
    if (event.button() == Qt::RightButton && hit == FrameHit::Caption)
        ShowSystemMenu(event.globalPosition().toPoint());
    if (event.button() != Qt::LeftButton)
        return true;
    QToolTip::hideText();
    m_nHeldHit = hit;
    m_frame.m_nPressedHit = m_frame.m_nHoverHit = hit;
    Refresh();
    if (hit == FrameHit::SystemMenu)
        ShowSystemMenu(event.globalPosition().toPoint());
    else if (hit != FrameHit::Caption) // which is not to swallow a double click
        StartHeld();
    return true;
}

/// Hands what the mouse holds to the window system, where it is moved or sized by it. Then the
/// release goes there, too.
bool CSkinWnd::StartHeld() {
    if (!StartMoveOrSize(m_nHeldHit))
        return false;
    m_nHeldHit = FrameHit::Nowhere;
    return true;
}

/// False where nothing is moved or sized by this part.
bool CSkinWnd::StartMoveOrSize(int hit) const {
    QWindow* window = m_hWnd->windowHandle();
    if (hit == FrameHit::Caption && m_frame.m_nWindowState != WindowState::Maximized)
        return window->startSystemMove();
    const Grip* grip = FindGrip(hit);
    return grip && window->startSystemResize(grip->edges);
}

bool CSkinWnd::OnMouseRelease(const QMouseEvent& event) {
    const int hit = HitAt(event.position());
    // What was not pressed here is none of a click: a window that has just been maximized by a
    // double click may lie with a button under the mouse.
    const bool pressed = std::exchange(m_nHeldHit, FrameHit::Nowhere) != FrameHit::Nowhere;
    if (!pressed || event.button() != Qt::LeftButton)
        return hit != FrameHit::Client;
    ClickButton(hit);
    return true;
}

void CSkinWnd::ClickButton(int hit) {
    const int custom = hit - FrameHit::FirstCustom;
    const bool isCustom = custom >= 0 && custom < std::ssize(m_frame.m_customButtons);
    if (isCustom || hit == FrameHit::Minimize || hit == FrameHit::Maximize)
        ClearButtons();
    if (hit == FrameHit::Close)
        m_hWnd->close();
    else if (hit == FrameHit::Minimize)
        Minimize();
    else if (hit == FrameHit::Maximize)
        ToggleMaximized();
    else if (isCustom && m_pfnCommand)
        m_pfnCommand(m_frame.m_customButtons[static_cast<std::size_t>(custom)].commandId);
}

bool CSkinWnd::OnDoubleClick(const QMouseEvent& event) {
    const int hit = HitAt(event.position());
    if (hit != FrameHit::Caption)
        return OnMousePress(event);
    if (event.button() == Qt::LeftButton && m_frame.m_bSizable) {
        ClearButtons();
        ToggleMaximized();
    }
    return true;
}

void CSkinWnd::ClearButtons() {
    m_frame.m_nHoverHit = m_frame.m_nPressedHit = FrameHit::Nowhere;
    Refresh();
}

bool CSkinWnd::OnToolTip(QPoint place, QPoint globalPlace) const {
    const int hit = HitAt(place);
    const QString tip = TipOf(hit);
    if (hit == FrameHit::Client || tip.isEmpty())
        return hit != FrameHit::Client;
    // For as long as the mouse stays on the button, which is seldom larger than this.
    QToolTip::showText(globalPlace, tip, m_hWnd,
                       QRect(place, QSize(1, 1)).marginsAdded({8, 8, 8, 8}));
    return true;
}

QString CSkinWnd::TipOf(int hit) const {
    switch (hit) {
    case FrameHit::Close:
        return m_strTipClose;
    case FrameHit::Minimize:
        return m_strTipMinimize;
    case FrameHit::Maximize:
        return m_frame.m_nWindowState == WindowState::Maximized ? m_strTipRestore
                                                                : m_strTipMaximize;
    default:
        return hit >= FrameHit::FirstCustom
                   ? m_frame.m_customButtons[static_cast<std::size_t>(hit - FrameHit::FirstCustom)]
                         .tip
                   : QString();
    }
}

/// At a point of the screen.
void CSkinWnd::ShowSystemMenu(QPoint place) {
    MakeSystemMenu(*m_hWnd, m_frame, m_systemMenuItems, [this](SystemCommand command) {
        OnSystemCommand(command);
    }).popup(place);
}

void CSkinWnd::OnSystemCommand(SystemCommand command) {
    switch (command) {
    case SystemCommand::Maximize:
        Maximize();
        break;
    case SystemCommand::Minimize:
        Minimize();
        break;
    case SystemCommand::Restore:
        Restore();
        break;
    case SystemCommand::Move:
        StartMoveOrSize(FrameHit::Caption);
        break;
    case SystemCommand::Size:
        StartMoveOrSize(FrameHit::BottomRight);
        break;
    case SystemCommand::Close:
        m_hWnd->close();
        break;
    }
}
