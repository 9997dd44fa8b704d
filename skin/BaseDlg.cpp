#include "skin/BaseDlg.h"

namespace {

QString g_strThemeFile;

/// The flags of a window whose frame we draw.
Qt::WindowFlags Frameless(FrameStyles style) {
    Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::WindowCloseButtonHint;
    flags.setFlag(Qt::WindowMinimizeButtonHint, style.testFlag(FrameStyle::MinimizeBox));
    flags.setFlag(Qt::WindowMaximizeButtonHint, style.testFlag(FrameStyle::MaximizeBox));
    return flags;
}

/// A frame of the desktop's has either a system menu with all buttons, or none of them.
constexpr Qt::WindowFlags kWithoutSystemMenu = Qt::CustomizeWindowHint | Qt::WindowTitleHint;

} // namespace

void SetThemeFile(const QString& path) {
    g_strThemeFile = path;
}

CBaseDlg::CBaseDlg(QWidget* parent, FrameStyles style, Qt::WindowType type)
    : QDialog(parent) {
    const bool skinned = m_skin.LoadSkin(g_strThemeFile, devicePixelRatioF());
    setWindowFlags(type | (skinned ? Frameless(style) : kWithoutSystemMenu));
    m_skin.InstallSkin(this, style);
    CFrameAccessible::Install();
}
