#pragma once

#include "skin/SkinWnd.h"

#include <QRect>

class CMenuBar;
class CMainLayout;
class QWidget;

/// The frame of the whole window.
inline constexpr FrameStyles kNormalStyle =
    FrameStyle::Sizable | FrameStyle::MinimizeBox | FrameStyle::MaximizeBox;

/// The two forms of the main window, whole and mini player, and the places of both.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CWindowForm {
public:
    /// `window` has to have its screen.
    CWindowForm(QWidget& window, CSkinWnd& skin, CMenuBar& menuBar, CMainLayout& layout);

    /// Takes form and places from the settings, or those of a first run.
    void ReadSettings();
    void SaveSettings();

    void SetMiniMode(bool mini) { m_bMiniMode = mini; }

    /// Shows the window's form in its place.
    void Place();

    /// Changes to the other form.
    void Toggle();

private:
    void SetForm();
    void MoveTo(const QRect& place);
    void TakePlace();

    QWidget& m_window;
    CSkinWnd& m_skin;
    CMenuBar& m_menuBar;
    CMainLayout& m_layout;
    bool m_bMiniMode = false;
    QRect m_rcNormal;
    QRect m_rcMini;
};
