#pragma once

#include "skin/FrameAccessible.h"
#include "skin/SkinWnd.h"

#include <QDialog>
#include <QString>

/// The theme that dialogs made from now on take their frames from.
void SetThemeFile(const QString& path);

/// The base of every dialog: a window whose frame is drawn from the theme. Where the theme can't be
/// read it keeps the frame of the desktop, without a system menu and its buttons.
///
/// A derived dialog gives itself a title and a layout as any dialog does; the layout lies inside
/// the frame. Thread: interface thread.
class CBaseDlg : public QDialog, public IFramedWindow {
public:
    explicit CBaseDlg(QWidget* parent, FrameStyles style = FrameStyle::Fixed,
                      Qt::WindowType type = Qt::Dialog);

    [[nodiscard]] CSkinWnd& GetSkin() override { return m_skin; }

protected:
    CSkinWnd m_skin;
};
