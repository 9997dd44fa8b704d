#include "skin/Frame.h"

#include "tests/skin/SyntheticTheme.h"

#include <array>
#include <sstream>
#include <tuple>

namespace {

constexpr QRgb kGround = 0xFF123456; // what no strip has drawn on

QImage DrawWhole(const Theme& theme, const FrameState& state) {
    QImage image(state.size, QImage::Format_RGB32);
    image.fill(kGround);
    QPainter painter(&image);
    DrawFrame(painter, theme, state);
    return image;
}

QImage DrawBand(const Theme& theme, const FrameState& state) {
    return DrawWhole(theme, state).copy(0, 0, state.size.width(), theme.m_nTopHeight);
}

/// A theme with all buttons: close at 14, maximize at 30, restore at 31, minimize at 45.
class ThemeWithButtons : public SyntheticTheme {
public:
    ThemeWithButtons() {
        AddButton(0, Picture::Close, {30, 8}, 14, 1);
        AddButton(1, Picture::Maximize, {36, 12}, 30, 2);
        AddButton(2, Picture::Minimize, {27, 6}, 45, 3);
        AddButton(1, Picture::Restore, {33, 10}, 31, 4);
    }
};

Theme Loaded(const SyntheticTheme& files, qreal scale = 1) {
    std::optional<Theme> theme = files.Load(scale);
    EXPECT_TRUE(theme);
    return theme.value_or(Theme());
}

FrameState SizableWindow(QSize size) {
    FrameState state;
    state.size = size;
    state.m_bSizable = state.m_bHasMinimize = state.m_bHasMaximize = true;
    return state;
}

/// The pixels in which two pictures differ.
QRect DifferenceOf(const QImage& left, const QImage& right) {
    QRect difference;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            if (left.pixel(x, y) != right.pixel(x, y))
                difference |= QRect(x, y, 1, 1);
        }
    }
    return difference;
}

} // namespace

// Worked out by hand from the sizes of the pictures: top 40 = 7 + 24 + 9, left 50 = 5 + 39 + 6,
// right 52 = 8 + 34 + 10, bottom 38 = 6 + 24 + 8. What a line shows: "4T0 11T7 103" is the top
// picture from its pixel 0 on at 4, and from its pixel 7 on at 11, up to 103. N: none.
TEST(FrameTest, StripsLieToThePixel) {
    const Theme theme = Loaded(SyntheticTheme());
    constexpr auto kRow = Qt::Horizontal;
    constexpr auto kColumn = Qt::Vertical;
    const QSize window(109, 90);
    const char* const wideTop = "4T0 11T7 35T7 59T7 83T7 96T31 103";
    const struct {
        QSize window;
        bool inactive;
        Qt::Orientation along;
        int place;  ///< of the row or column
        int across; ///< the place of the line in all pictures
        const char* spans;
    } lines[] = {
        // The top strip is 100 long: its last tile is cut, the tail at 92 lies over it, and its
        // last pixel is under the right strip.
        {window, false, kRow, 29, 29, wideTop},
        {window, true, kRow, 29, 59, wideTop},
        {window, false, kRow, 0, 0, "0L0 4"},
        {window, true, kRow, 0, 0, "103R6 109"},
        // The bottom strip is 99 long: its tail at 91 has 7 of 8 pixels, and a tile shows behind.
        {window, false, kRow, 87, 2, "4B0 10B6 34B6 58B6 82B6 95B30 102B26 103"},
        {window, true, kRow, 87, 7, "4B0 10"},
        // Sides: whole tails at their place.
        {window, false, kColumn, 3, 3, "0L0 5L5 44L5 83"},
        {window, false, kColumn, 3, 3, "84L44 90"},
        {window, true, kColumn, 104, 7, "0R0 8R8 42R8 76"},
        {window, true, kColumn, 104, 7, "80R42 90"},
        {window, false, kColumn, 50, 0, "30N0 85"},
        // 21 long: one tile, cut, and the tail over it.
        {{30, 60}, false, kRow, 10, 10, "4T0 11T7 17T31 24"},
        // 5 long: no tile, and a tail that begins before the strip.
        {{14, 60}, false, kRow, 10, 10, "4T34 8"},
        // Lower than the side pictures: the tail covers the head.
        {{109, 9}, false, kColumn, 0, 0, "0L0 3L44 9"},
    };
    for (const auto& line : lines) {
        QImage image(line.window, QImage::Format_RGB32);
        image.fill(kGround);
        QPainter painter(&image);
        DrawFrameSides(painter, theme, image.rect(), line.inactive, true);
        const bool isRow = line.along == Qt::Horizontal;
        std::istringstream spans(line.spans);
        int to = 0;
        spans >> to;
        char letter = 0;
        for (int from = to, source = 0; spans >> letter >> source >> to; from = to) {
            const auto picture = static_cast<Picture>(1 + QByteArrayView("TLRB").indexOf(letter));
            for (int at = from; at < to; ++at, ++source) {
                const QRgb expected = letter == 'N' ? kGround
                                      : isRow       ? PixelOf(picture, source, line.across)
                                                    : PixelOf(picture, line.across, source);
                const QPoint point = isRow ? QPoint(at, line.place) : QPoint(line.place, at);
                ASSERT_EQ(image.pixel(point), expected)
                    << line.spans << ", pixel " << point.x() << ", " << point.y();
            }
        }
    }
}

TEST(FrameTest, ButtonsShowTheirStateAtTheirPlace) {
    ThemeWithButtons files;
    const Theme theme = Loaded(files);
    FrameState state = SizableWindow({109, 90});
    state.m_customButtons.push_back({999, 80, 2, 0, MakePlaces(Picture::None, {24, 7}), {}});
    constexpr auto kCustom = FrameHit::FirstCustom;
    constexpr auto kMaximized = WindowState::Maximized;
    // What is hovered over and pressed, and the picture, place and state that show. Standard
    // buttons are as high as the close picture, if theirs is.
    const std::tuple<int, int, WindowState, Picture, QRect, int> rows[] = {
        {0, 0, {}, Picture::Close, {95, 1, 10, 8}, 0},
        {20, 0, {}, Picture::Close, {95, 1, 10, 8}, 2},
        {20, 20, {}, Picture::Close, {95, 1, 10, 8}, 1},
        {20, 8, {}, Picture::Minimize, {64, 3, 9, 6}, 1},
        {9, 0, {}, Picture::Maximize, {79, 2, 12, 8}, 2},
        {9, 9, kMaximized, Picture::Restore, {78, 4, 11, 8}, 1},
        {kCustom, 0, {}, Picture::None, {29, 2, 8, 7}, 2},
        {kCustom, kCustom, {}, Picture::None, {29, 2, 8, 7}, 1},
        {kCustom + 1, 0, {}, Picture::None, {29, 2, 8, 7}, 0},
    };
    for (const auto& [hover, pressed, windowState, picture, place, shown] : rows) {
        state.m_nHoverHit = hover;
        state.m_nPressedHit = pressed;
        state.m_nWindowState = windowState;
        const QImage band = DrawBand(theme, state);
        const QRect part({place.width() * shown, 0}, place.size());
        EXPECT_EQ(band.copy(place), MakePlaces(picture, {36, 12}).copy(part)) << hover;
        const QPoint below = place.bottomLeft() + QPoint(0, 1);
        EXPECT_EQ(qBlue(band.pixel(below)), static_cast<int>(Picture::Top));
    }
    state.m_customButtons.clear();
    state.m_bHasMinimize = state.m_bHasMaximize = false;
    EXPECT_EQ(DifferenceOf(DrawBand(theme, state), DrawBand(Loaded(SyntheticTheme()), state)),
              QRect(95, 1, 10, 8));
}

TEST(FrameTest, KeyColourMakesHolesInTheBandAlone) {
    for (const bool usesTran : {true, false}) {
        ThemeWithButtons files;
        files.Set("UsesTran", usesTran ? 1 : 0);
        QImage left = MakePlaces(Picture::Left, {9, 50});
        for (const QPoint hole : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(2, 40)})
            left.setPixel(hole, kKeyColour);
        files.Write("left.bmp", left);
        QImage top = MakePlaces(Picture::Top, {40, 61});
        top.setPixel(3, 6, kKeyColour); // below the icon
        files.Write("top.png", top);
        QImage close = MakePlaces(Picture::Close, {30, 8});
        close.setPixel(3, 2, kKeyColour);
        files.Write("button0.png", close);
        const Theme theme = Loaded(files);

        FrameState state = SizableWindow({109, 90});
        state.icon = QImage(16, 16, QImage::Format_RGB32);
        state.icon.fill(kKeyColour); // no hole: it is no part of the theme
        const QRegion holes = QRegion(0, 0, 2, 1) + QRegion(0, 1, 1, 1) + QRegion(7, 6, 1, 1);
        const QRegion whole(0, 0, 109, 90);
        EXPECT_EQ(BuildWindowRegion(theme, state.size), usesTran ? whole - holes : whole);

        const QImage drawn = DrawWhole(theme, state);
        EXPECT_EQ(drawn.pixel(0, 1), usesTran ? kGround : kKeyColour);
        EXPECT_EQ(drawn.pixel(2, 40), kKeyColour);
        EXPECT_EQ(drawn.pixel(4, 5), kKeyColour);
        state.icon.fill(Qt::red);
        EXPECT_EQ(DrawWhole(theme, state).pixel(7, 6), usesTran ? kGround : 0xFFFF0000);
        // The strip shows through the button: column 87 - 4 - 7 of its tile.
        EXPECT_EQ(drawn.pixel(98, 3), usesTran ? PixelOf(Picture::Top, 33, 3) : kKeyColour);
        EXPECT_EQ(drawn.pixel(99, 3), PixelOf(Picture::Close, 4, 2));
    }
}

TEST(FrameTest, TitleStaysInItsPlace) {
    SyntheticTheme files;
    for (const qreal scale : {1.0, 2.0}) {
        const Theme theme = Loaded(files, scale);
        FrameState state;
        state.size = QSize(200, 90) * scale;
        const QImage bare = DrawBand(theme, state);
        const QRect place(QPoint(25, 4) * scale, QPoint(191, 30) * scale - QPoint(1, 1));
        const QString titles[] = {"two\nlines & more", QString(100'000, u'm'),
                                  QString(3000, QChar(0x05D0))};
        for (const QString& title : titles) {
            state.m_strTitle = title;
            const QRect ink = DifferenceOf(bare, DrawBand(theme, state));
            EXPECT_TRUE(place.contains(ink)) << title.left(20).toStdString();
            EXPECT_LE(ink.left(), place.left() + 4 * scale) << title.left(20).toStdString();
            EXPECT_NEAR(ink.center().y(), place.center().y(), 3 * scale);
            EXPECT_LE(ink.height(), 18 * scale);
            EXPECT_EQ(ink.width() > 140 * scale, title.size() > 1000);
        }
    }
}

TEST(FrameTest, HitTestKnowsEveryPlace) {
    ThemeWithButtons files;
    const Theme theme = Loaded(files);
    FrameState sizable = SizableWindow({300, 200});
    sizable.m_customButtons.push_back({999, 80, 6, 0, QImage(24, 7, QImage::Format_RGB32), {}});
    std::array states{sizable, sizable, sizable};
    states[1].m_bSizable = states[1].m_bHasMinimize = states[1].m_bHasMaximize = false;
    states[2].m_nWindowState = WindowState::Maximized;
    // x, y, and what is there of the window sizable, fixed, maximized. Close is 286 to 296 by 1 to
    // 9, minimize 255 to 264 by 3 to 9, restore 269 to 280 by 4 to 14, maximize 270 to 282 by 2 to
    // 14, an added one 220 to 228 by 6 to 13. Corners are as wide as the left edge, 4, beside the
    // right one's 6, and the top edge is as high as the bottom one, 5.
    const int rows[][5] = {{286, 1, 20, 20, 20},     {295, 8, 20, 20, 20}, {285, 8, 2, 2, 2},
                           {286, 0, 12, 1, 1},       {286, 9, 2, 2, 2},    {255, 3, 8, 1, 8},
                           {263, 8, 8, 2, 8},        {269, 5, 2, 2, 9},    {270, 13, 9, 2, 9},
                           {281, 13, 9, 2, 2},       {270, 2, 9, 1, 1},    {220, 6, 900, 900, 900},
                           {227, 12, 900, 900, 900}, {228, 12, 2, 2, 2},   {4, 5, 3, 3, 3},
                           {19, 20, 3, 3, 3},        {20, 20, 2, 2, 2},    {0, 0, 13, 1, 1},
                           {3, 29, 13, 1, 1},        {299, 0, 14, 1, 1},   {296, 29, 14, 1, 1},
                           {295, 29, 1, 1, 1},       {294, 0, 1, 1, 1},    {293, 0, 12, 1, 1},
                           {100, 4, 12, 1, 1},       {100, 5, 2, 2, 2},    {100, 29, 2, 2, 2},
                           {100, 30, 1, 1, 1},       {0, 30, 10, 1, 1},    {3, 194, 10, 1, 1},
                           {3, 195, 16, 1, 1},       {4, 195, 15, 1, 1},   {293, 199, 15, 1, 1},
                           {294, 195, 17, 1, 1},     {294, 194, 11, 1, 1}, {299, 30, 11, 1, 1},
                           {150, 100, 1, 1, 1},      {-1, 300, 1, 1, 1}};
    for (const auto& row : rows)
        for (std::size_t i = 0; i < states.size(); ++i)
            EXPECT_EQ(HitTest(theme, states[i], {row[0], row[1]}), row[2 + i])
                << row[0] << ' ' << row[1];
}
