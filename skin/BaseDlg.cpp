#include "skin/BaseDlg.h"

#include "skin/FrameAccessible.h"

namespace {

QString g_strThemeFile;

/// What the window system is told of a window of this style, whoever draws its frame.
Qt::WindowFlags Buttons(FrameStyles style) {
    Qt::WindowFlags flags = Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
    flags.setFlag(Qt::WindowMinimizeButtonHint, style.testFlag(FrameStyle::MinimizeBox));
    flags.setFlag(Qt::WindowMaximizeButtonHint, style.testFlag(FrameStyle::MaximizeBox));
    return flags;
}

} // namespace

void SetThemeFile(const QString& path) {
    g_strThemeFile = path;
}

CBaseDlg::CBaseDlg(QWidget* parent, FrameStyles style, Qt::WindowType type)
    : QDialog(parent) {
    const bool skinned = m_skin.LoadSkin(g_strThemeFile, devicePixelRatioF());
    Qt::WindowFlags flags = type | Buttons(style);
    // The desktop gives a frame that it draws a system menu, unless it is told all of it.
    flags |= skinned ? Qt::FramelessWindowHint : Qt::CustomizeWindowHint;
    setWindowFlags(flags);
    m_skin.InstallSkin(this, style);
    FrameAccessible::Install();
}
