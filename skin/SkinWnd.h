#pragma once

#include "skin/Frame.h"
#include "skin/Pictures.h"
#include "skin/SystemMenu.h"
#include "skin/Theme.h"

#include <QFlags>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QAction;
class QMouseEvent;
class QPaintEvent;

/// What the user may do with a window by its frame.
enum class FrameStyle : unsigned {
    Fixed = 0,
    Sizable = 1,
    MinimizeBox = 2,
    MaximizeBox = 4,
};
Q_DECLARE_FLAGS(FrameStyles, FrameStyle)
Q_DECLARE_OPERATORS_FOR_FLAGS(FrameStyles)

/// A button of a frame that can be used now.
struct FrameButton {
    int hit = FrameHit::Nowhere;
    QRect place; ///< in the window, device-independent pixels
    QString name;
};

/// Whether the window system lets the desktop alone say where a window is, and what a maximized one
/// covers.
[[nodiscard]] bool IsPlacedByDesktop();

/// The frame of one window, drawn from a theme in place of the desktop's: border, title, buttons,
/// the window's shape, and what the mouse does to them. Moving and sizing are the window system's;
/// the frame only starts them.
///
/// The window is one without a frame of its own (Qt::FramelessWindowHint). The border is the
/// window's contents margins, so a layout lies inside it. The frame sees the window's events before
/// the window's own class does, and stops those that are about the frame.
///
/// Thread: interface thread. Lifetime: the frame ends with the window or with this object,
/// whichever goes first.
class CSkinWnd : public QObject {
public:
    /// Takes the commands of the frame's own buttons.
    using CommandHandler = std::function<void(int commandId)>;

    /// Reads the theme for a scale. False if it can't be used; then there is no frame, and
    /// InstallSkin() refuses.
    bool LoadSkin(const QString& path, qreal scale);

    /// Gives the frame to a window, again for another style. False, and nothing is done, without a
    /// window or a theme.
    bool InstallSkin(QWidget* window, FrameStyles style);

    /// Appends a button of one's own: a strip of three states, its left edge `x` from the window's
    /// right edge and its top edge at `y`, in device-independent pixels.
    void AddFrameButton(PictureId bitmapId, int commandId, int x, int y, const QString& tip);

    /// Gives the first button with this command another picture, place and tip. False if there is
    /// none.
    bool ChangeFrameButton(PictureId bitmapId, int commandId, int x, int y, const QString& tip);

    void SetFrameTips(const QString& minimize, const QString& maximize, const QString& restore,
                      const QString& close);
    void SetCommandHandler(CommandHandler handler) { m_pfnCommand = std::move(handler); }

    /// Appends an item behind a separator to the system menu. The action is the caller's and
    /// outlives the frame.
    void AppendToSystemMenu(QAction* action) { m_systemMenuItems.append(action); }

    /// Covers the work area of the screen, also where the window's maximum size was less, and keeps
    /// the place to come back to. Nothing happens without an installed frame; the same goes for the
    /// other two.
    void Maximize();
    void Restore();
    void Minimize();

    /// None without an installed frame.
    [[nodiscard]] std::vector<FrameButton> GetButtons() const;

    /// Does what a click on this button does.
    void ClickButton(int hit);

    /// True while it covers the work area, or will when it is no longer minimized.
    [[nodiscard]] bool IsMaximized() const;

private:
    bool eventFilter(QObject* object, QEvent* event) override;
    void HookWindow(QWidget* window);
    bool WindowProc(QEvent& event);
    void FitToScale();
    void ApplyTheme();
    void ApplyShape();
    void Refresh() const;
    void OnPaint(const QPaintEvent& event);
    void OnShow() const;
    void OnStateChange(Qt::WindowStates before);
    bool OnToolTip(QPoint place, QPoint globalPlace) const;
    bool OnMouseMove(QPointF place, bool held);
    bool OnMousePress(const QMouseEvent& event);
    bool OnMouseRelease(const QMouseEvent& event);
    bool OnDoubleClick(const QMouseEvent& event);
    bool StartHeld();
    bool StartMoveOrSize(int hit) const;
    void ClearButtons();
    void ShowSystemMenu(QPoint globalPlace);
    void ToggleMaximized();
    void OnSystemCommand(SystemCommand command);
    void SetState(WindowState state);

    [[nodiscard]] int HitAt(QPointF place) const;
    [[nodiscard]] QString TipOf(int hit) const;
    [[nodiscard]] QString NameOf(int hit) const;
    [[nodiscard]] QRect ClientRect() const;

    QPointer<QWidget> m_hWnd; ///< none without an installed frame
    QString m_strTheme;
    std::optional<Theme> m_theme;
    qreal m_nScale = 1; ///< that the theme was last asked for; it may have another
    FrameState m_frame;
    int m_nLastHit = FrameHit::Nowhere;
    int m_nHeldHit = FrameHit::Nowhere; ///< where a drag may begin
    QRect m_rcRestoreWindow;
    WindowState m_nStateBeforeMinimize = WindowState::Normal;
    QString m_strTipMinimize;
    QString m_strTipMaximize;
    QString m_strTipRestore;
    QString m_strTipClose;
    QList<QAction*> m_systemMenuItems;
    CommandHandler m_pfnCommand;
};
