#include "skin/SkinWnd.h"

#include "base/Language.h"

#include <QApplication>
#include <QHelpEvent>
#include <QHoverEvent>
#include <QIcon>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// A region of device pixels in the pixels of 100 % that a window's mask is given in. A pixel that
/// is only partly covered belongs to it.
QRegion ToLogical(const QRegion& region, qreal scale) {
    if (scale == 1)
        return region;
    QRegion logical;
    for (const QRect& rect : region) {
        const QRectF exact(rect.x() / scale, rect.y() / scale, rect.width() / scale,
                           rect.height() / scale);
        logical += exact.toAlignedRect();
    }
    return logical;
}

/// The image of a button for a scale, pixel by pixel.
QImage ButtonImage(int bitmapId, qreal scale) {
    QImage image = LoadPicture(static_cast<PictureId>(bitmapId), scale).toImage();
    image.setDevicePixelRatio(1);
    return image;
}

int Margin(int pixels, qreal scale) {
    return static_cast<int>(std::ceil(pixels / scale));
}

} // namespace

bool IsPlacedByDesktop() {
    return QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

bool CSkinWnd::LoadSkin(const QString& path, qreal scale) {
    m_strTheme = path;
    m_nScale = scale;
    m_theme = Theme::Load(path, scale);
    return m_theme.has_value();
}

bool CSkinWnd::InstallSkin(QWidget* window, FrameStyles style) {
    if (!window || !m_theme)
        return false;
    const bool again = m_hWnd == window;
    HookWindow(window);
    m_frame.m_bSizable = style.testFlag(FrameStyle::Sizable);
    m_frame.m_bHasMinimize = style.testFlag(FrameStyle::MinimizeBox);
    m_frame.m_bHasMaximize = style.testFlag(FrameStyle::MaximizeBox);
    m_frame.m_bActive = window->isActiveWindow();
    m_frame.m_strTitle = window->windowTitle();
    window->setAttribute(Qt::WA_Hover); // so that it hears of the mouse over its children, too
    if (!again) {
        auto* menuKey = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Space), window);
        connect(menuKey, &QShortcut::activated, this,
                [this] { ShowSystemMenu(m_hWnd->mapToGlobal(ClientRect().topLeft())); });
    }
    ApplyTheme();
    return true;
}

void CSkinWnd::AddFrameButton(PictureId bitmapId, int commandId, int x, int y, const QString& tip) {
    m_frame.m_customButtons.emplace_back().commandId = commandId;
    ChangeFrameButton(bitmapId, commandId, x, y, tip);
}

bool CSkinWnd::ChangeFrameButton(PictureId bitmapId, int commandId, int x, int y,
                                 const QString& tip) {
    auto& buttons = m_frame.m_customButtons;
    const auto button = std::find_if(buttons.begin(), buttons.end(), [=](const auto& record) {
        return record.commandId == commandId;
    });
    if (button == buttons.end())
        return false;
    const int id = static_cast<int>(bitmapId);
    *button = {commandId, x, y, id, ButtonImage(id, m_theme ? m_theme->scale : 1), tip};
    Refresh();
    return true;
}

void CSkinWnd::SetFrameTips(const QString& minimize, const QString& maximize,
                            const QString& restore, const QString& close) {
    m_strTipMinimize = minimize;
    m_strTipMaximize = maximize;
    m_strTipRestore = restore;
    m_strTipClose = close;
}

/// Leaves the window that was hooked before.
void CSkinWnd::HookWindow(QWidget* window) {
    if (m_hWnd)
        m_hWnd->removeEventFilter(this);
    m_hWnd = window;
    m_hWnd->installEventFilter(this);
}

bool CSkinWnd::eventFilter(QObject* object, QEvent* event) {
    return object == m_hWnd && m_theme && WindowProc(*event);
}

/// True stops the event: the window does not get it.
bool CSkinWnd::WindowProc(QEvent& event) {
    switch (event.type()) {
    case QEvent::Paint:
        OnPaint(static_cast<QPaintEvent&>(event));
        return false;
    case QEvent::Resize:
        ApplyShape();
        Refresh();
        return false;
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        m_frame.m_bActive = event.type() == QEvent::WindowActivate;
        Refresh();
        return false;
    case QEvent::WindowTitleChange:
        m_frame.m_strTitle = m_hWnd->windowTitle();
        Refresh();
        return false;
    case QEvent::Show:
        OnShow();
        return false;
    case QEvent::WindowStateChange:
        OnStateChange(static_cast<QWindowStateChangeEvent&>(event).oldState());
        return false;
    case QEvent::HoverMove:
        OnMouseMove(static_cast<QHoverEvent&>(event).position(), false);
        return false;
    case QEvent::MouseMove:
        return OnMouseMove(static_cast<QMouseEvent&>(event).position(), true);
    case QEvent::MouseButtonPress:
        return OnMousePress(static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonRelease:
        return OnMouseRelease(static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonDblClick:
        return OnDoubleClick(static_cast<QMouseEvent&>(event));
    case QEvent::ToolTip: {
        const auto& help = static_cast<QHelpEvent&>(event);
        return OnToolTip(help.pos(), help.globalPos());
    }
    default:
        return false;
    }
}

bool CSkinWnd::IsMaximized() const {
    return m_frame.m_nWindowState == WindowState::Maximized ||
           (m_frame.m_nWindowState == WindowState::Minimized &&
            m_nStateBeforeMinimize == WindowState::Maximized);
}

void CSkinWnd::Maximize() {
    if (!m_hWnd)
        return;
    QWidget& window = *m_hWnd;
    const QRect workArea = window.screen()->availableGeometry();
    m_rcRestoreWindow = window.geometry();
    SetState(WindowState::Maximized);
    // It may have come from a smaller screen.
    window.setMaximumSize(window.maximumSize().expandedTo(workArea.size()));
    if (IsPlacedByDesktop())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    else
        window.setGeometry(workArea);
}

void CSkinWnd::Restore() {
    if (!m_hWnd)
        return;
    if (m_frame.m_nWindowState == WindowState::Minimized) {
        SetState(m_nStateBeforeMinimize);
        m_hWnd->setWindowState(m_hWnd->windowState() & ~Qt::WindowMinimized);
    } else if (m_frame.m_nWindowState == WindowState::Maximized) {
        SetState(WindowState::Normal);
        if (m_hWnd->isMaximized())
            m_hWnd->setWindowState(m_hWnd->windowState() & ~Qt::WindowMaximized);
        else
            m_hWnd->setGeometry(m_rcRestoreWindow);
    }
}

void CSkinWnd::Minimize() {
    if (!m_hWnd)
        return;
    m_nStateBeforeMinimize = m_frame.m_nWindowState;
    SetState(WindowState::Minimized);
    m_hWnd->setWindowState(m_hWnd->windowState() | Qt::WindowMinimized);
}

void CSkinWnd::ToggleMaximized() {
    if (m_frame.m_nWindowState == WindowState::Maximized)
        Restore();
    else
        Maximize();
}

void CSkinWnd::SetState(WindowState state) {
    m_frame.m_nWindowState = state;
    Refresh();
}

/// The desktop can do what our buttons do, with its own.
void CSkinWnd::OnStateChange(Qt::WindowStates before) {
    const QWidget& window = *m_hWnd;
    if (m_frame.m_nWindowState == WindowState::Minimized && !window.isMinimized())
        SetState(m_nStateBeforeMinimize);
    const bool was = before.testFlag(Qt::WindowMaximized);
    if (window.isMaximized() == was)
        return;
    if (!was && m_frame.m_nWindowState == WindowState::Normal)
        m_rcRestoreWindow = window.normalGeometry();
    SetState(was ? WindowState::Normal : WindowState::Maximized);
}

/// A layout keeps a window as large as its parts need; this adds what the frame needs.
void CSkinWnd::OnShow() const {
    QWidget& window = *m_hWnd;
    const QSize smallest = window.minimumSize();
    const QSize ours = (QSizeF(MinimumTrackSize(*m_theme)) / m_theme->scale).toSize();
    if (m_frame.m_bSizable && smallest != smallest.expandedTo(ours))
        window.setMinimumSize(smallest.expandedTo(ours));
}

/// The window may have come to a screen of another scale. A theme that can't be read for it stays
/// as it is, and is drawn larger or smaller.
void CSkinWnd::FitToScale() {
    const qreal scale = m_hWnd->devicePixelRatioF();
    if (std::exchange(m_nScale, scale) == scale)
        return;
    std::optional<Theme> theme = Theme::Load(m_strTheme, scale);
    if (!theme)
        return;
    m_theme = std::move(theme);
    for (SkinButtonRecord& button : m_frame.m_customButtons)
        button.image = ButtonImage(button.bitmapId, scale);
    ApplyTheme();
}

void CSkinWnd::ApplyTheme() {
    const qreal scale = m_theme->scale;
    m_hWnd->setContentsMargins(
        Margin(m_theme->m_nLeftWidth, scale), Margin(m_theme->m_nTopHeight, scale),
        Margin(m_theme->m_nRightWidth, scale), Margin(m_theme->m_nBottomHeight, scale));
    ApplyShape();
    Refresh();
}

void CSkinWnd::ApplyShape() {
    m_frame.size = (QSizeF(m_hWnd->size()) * m_theme->scale).toSize();
    if (m_theme->m_bUsesTran)
        m_hWnd->setMask(ToLogical(BuildWindowRegion(*m_theme, m_frame.size), m_theme->scale));
    else
        m_hWnd->clearMask();
}

void CSkinWnd::Refresh() const {
    if (m_hWnd)
        m_hWnd->update(QRegion(m_hWnd->rect()) - ClientRect());
}

QRect CSkinWnd::ClientRect() const {
    return m_hWnd->contentsRect();
}

void CSkinWnd::OnPaint(const QPaintEvent& event) {
    FitToScale();
    if (ClientRect().contains(event.rect()))
        return;
    m_frame.icon = m_hWnd->windowIcon().pixmap(QSize(16, 16), m_theme->scale).toImage();
    m_frame.icon.setDevicePixelRatio(1);
    QPainter painter(m_hWnd);
    painter.scale(1 / m_theme->scale, 1 / m_theme->scale);
    DrawFrame(painter, *m_theme, m_frame);
}

std::vector<FrameButton> CSkinWnd::GetButtons() const {
    std::vector<FrameButton> buttons;
    if (!m_hWnd || !m_theme)
        return buttons;
    for (const auto& [hit, place] : PlaceButtons(*m_theme, m_frame)) {
        const QRectF exact(QPointF(place.topLeft()) / m_theme->scale,
                           QSizeF(place.size()) / m_theme->scale);
        buttons.push_back({hit, exact.toRect(), NameOf(hit)});
    }
    return buttons;
}

QString CSkinWnd::NameOf(int hit) const {
    switch (hit) {
    case FrameHit::Close:
        return LoadString(IDS_MAIN_CLOSE);
    case FrameHit::Minimize:
        return LoadString(IDS_MAIN_MIN);
    case FrameHit::Maximize:
        return LoadString(IsMaximized() ? IDS_MAIN_RESTOR : IDS_MAIN_MAX);
    default:
        return TipOf(hit);
    }
}
