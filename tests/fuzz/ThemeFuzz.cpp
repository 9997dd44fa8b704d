// Loads a theme file and a picture that the fuzzer makes up, and draws what loads.
//
// The fuzzer's bytes are the text, a byte of 0, and the picture, which lies in the theme's folder
// as "a.png" and is its own rendering for 200 %.

#include "skin/Frame.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fuzz/Require.h"

#include <QGuiApplication>
#include <QPainter>

#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace {

void DrawWindow(const Theme& theme, QSize size) {
    FrameState state;
    state.size = size;
    state.m_bActive = size.width() % 2 == 0;
    state.m_bSizable = state.m_bHasMinimize = state.m_bHasMaximize = true;
    state.m_nHoverHit = FrameHit::Close;
    state.m_strTitle = QStringLiteral("Title");
    QImage window(size, QImage::Format_RGB32);
    QPainter painter(&window);
    DrawFrame(painter, theme, state);
    Require((BuildWindowRegion(theme, size) - QRegion(window.rect())).isEmpty());
    for (int i = 0; i < 100; ++i) {
        const QPoint point(size.width() * (i % 10) / 9, size.height() * (i / 10) / 9);
        const int hit = HitTest(theme, state, point);
        Require(hit >= FrameHit::Client && hit <= FrameHit::Close);
    }
}

} // namespace

/// What the library that finds fonts keeps is not ours.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz_theme";
    static char* argv[] = {name, nullptr};
    static const QGuiApplication application(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFolder folder;
    static const QString picture = folder.Write(QStringLiteral("a.png"), {});
    static const int linked =
        ::link(picture.toUtf8(), folder.File(QStringLiteral("a@2x.png")).toUtf8());
    Require(linked == 0);
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype textEnd = (bytes + '\0').indexOf('\0');
    const QString path = folder.Write(QStringLiteral("theme.ini"), bytes.left(textEnd));
    folder.Write(QStringLiteral("a.png"), bytes.mid(textEnd + 1));

    for (const qreal scale : {1.0, 1.5}) {
        const std::optional<Theme> theme = Theme::Load(path, scale);
        if (!theme)
            continue;
        const QSize least = MinimumTrackSize(*theme);
        Require(least.width() <= 3 * 1536 && least.height() <= 1536 + 30);
        for (const QSize window : {QSize(1, 1), QSize(300, 9), QSize(9, 300), QSize(640, 480)})
            DrawWindow(*theme, window);
    }
    return 0;
}
