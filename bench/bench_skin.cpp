// Cost of the frame of a window of 1920 by 1080 with everything on it: painting it whole, and
// loading the theme, at 100 % and 200 %.
//
//   bench_skin [THEME.INI]
//
// Without an argument it takes the program's own theme, or if there is none yet one of like size
// that it makes. Runs without a display. Times are medians; files are in the system's cache.

#include "bench/Clock.h"
#include "skin/Frame.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>

#include <array>
#include <cstdio>

namespace {

constexpr int kRounds = 200;

struct Figures {
    double frame;
    double load;
};

/// A theme with rounded corners, drawn in plain colours.
QString MakeTheme(const QTemporaryDir& folder) {
    const std::tuple<const char*, int, int> pictures[] = {
        {"top", 120, 60},  {"left", 16, 64},     {"right", 16, 64},   {"bottom", 120, 16},
        {"close", 66, 18}, {"minimize", 66, 18}, {"maximize", 66, 18}};
    for (const auto& [name, width, height] : pictures) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(QColor(21, 23, 26));
        image.setPixel(0, 0, kKeyColour);
        for (const int scale : {1, 2})
            image.scaled(scale * width, scale * height)
                .save(folder.filePath(QLatin1String(name) +
                                      QLatin1String(scale == 1 ? ".png" : "@2x.png")));
    }
    QFile file(folder.filePath(QStringLiteral("theme.ini")));
    file.open(QIODevice::WriteOnly);
    file.write("[Personality]\nTop=top.png\nLeft=left.png\nRight=right.png\nBottom=bottom.png\n"
               "TopTopHeight=40\nTopBotHeight=40\nLeftTopHeight=30\nLeftBotHeight=8\n"
               "RightTopHeight=30\nRightBotHeight=8\nBottomTopHeight=8\nBottomBotHeight=8\n"
               "TextShift=32\nUsesTran=1\nButtonCount=3\n"
               "[Button0]\nButtonImage=close.png\nXCoord=30\nYCoord=5\n"
               "[Button1]\nButtonImage=maximize.png\nAction=1\nXCoord=54\nYCoord=5\n"
               "[Button2]\nButtonImage=minimize.png\nAction=2\nXCoord=78\nYCoord=5\n");
    return file.fileName();
}

FrameState WindowAt(int scale) {
    FrameState state;
    state.size = QSize(1920, 1080) * scale;
    state.m_bSizable = state.m_bHasMinimize = state.m_bHasMaximize = true;
    state.icon = QImage(16 * scale, 16 * scale, QImage::Format_ARGB32_Premultiplied);
    state.icon.fill(QColor(122, 190, 223));
    state.m_strTitle = QStringLiteral("Veltria Track Deck");
    QImage button(66 * scale, 18 * scale, QImage::Format_ARGB32_Premultiplied);
    button.fill(Qt::transparent);
    state.m_customButtons.push_back({999, 130, 5, 275, button, {}});
    return state;
}

template <class Call>
double MedianMs(Call call) {
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round)
        times.push_back(MeasureMs(call));
    return Median(times);
}

/// Nothing if the theme can't be loaded.
std::optional<Figures> Measure(const QString& path, int scale) {
    const std::optional<Theme> theme = Theme::Load(path, scale);
    if (!theme)
        return std::nullopt;
    const FrameState state = WindowAt(scale);
    QImage window(state.size, QImage::Format_RGB32);
    window.fill(Qt::black);
    return Figures{MedianMs([&] {
                       QPainter painter(&window);
                       DrawFrame(painter, *theme, state);
                   }),
                   MedianMs([&] { (void)Theme::Load(path, scale); })};
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    QString path = QStringLiteral(PROGRAM_FOLDER "/skin/blackstyle/theme.ini");
    if (argc > 1)
        path = QString::fromLocal8Bit(argv[1]);
    else if (!QFileInfo::exists(path))
        path = MakeTheme(folder);
    const std::optional<Figures> plain = Measure(path, 1);
    const std::optional<Figures> large = Measure(path, 2);
    if (!plain || !large) {
        std::fprintf(stderr, "can't load %s\n", qPrintable(path));
        return 1;
    }
    std::printf("skin frame_ms=%.2f load_ms=%.2f frame_ms_at_200=%.2f load_ms_at_200=%.2f\n",
                plain->frame, plain->load, large->frame, large->load);
    return 0;
}
