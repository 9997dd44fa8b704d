#include "skin/Theme.h"

#include "tests/skin/SyntheticTheme.h"

#include <QtEndian>

#include <sys/resource.h>
#include <unistd.h>

#include <cmath>

namespace {

const QByteArray kTop = "top.png";
const QByteArray kLeft = "left.bmp";

using Change = std::function<void(SyntheticTheme&)>;

Change Setting(const char* key, const QByteArray& value) {
    return [=](SyntheticTheme& files) { files.Set(key, value); };
}

Change Adding(int buttons, int x) {
    return [=](SyntheticTheme& files) {
        for (int i = 0; i < buttons; ++i)
            files.AddButton(1, Picture::Maximize, {30, 8}, x, 1);
    };
}

Change Writing(const QByteArray& name, const QByteArray& file) {
    return [=](SyntheticTheme& files) { files.Write(name, file); };
}

QByteArray BlackPng(int width, int height, QImage::Format format = QImage::Format_Grayscale8) {
    QImage image(width, height, format);
    image.fill(Qt::black);
    return Encode(image, "png");
}

/// A picture with 200 texts of 7 MB each, in a file of 1.4 MB.
QByteArray PngWithLongTexts() {
    QImage image = MakePlaces(Picture::Top, {40, 61});
    image.setText("key", QString(7'000'000, u'x'));
    QByteArray file = Encode(image, "png");
    const qsizetype text = file.indexOf("zTXt") - 4;
    return file.insert(text, file.mid(text, file.indexOf("IDAT") - 4 - text).repeated(199));
}

QByteArray BmpOf(int width, int height) {
    QByteArray file = Encode(MakePlaces(Picture::Left, {9, 50}), "bmp");
    qToLittleEndian(width, file.data() + 18);
    qToLittleEndian(height, file.data() + 22);
    return file;
}

/// The most memory that the process has had up to now, in MB.
long PeakMegabytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

} // namespace

TEST(ThemeTest, ReadsWhatTheFileSays) {
    SyntheticTheme files;
    files.Set("DialogBmp", "missing.png");
    files.Set("Top", "C:\\skins/..\\..\\top.png");
    files.Set("LeftTopHeight", 20);
    files.Set("LeftBotHeight", 40);
    files.Set("BottomBotHeight", 100);
    files.Set("ButtonImgCount", 2);
    files.AddButton(1, Picture::Maximize, {36, 12}, 30, 2);
    files.AddButton({{"Action", "5"}, {"ButtonImage", "missing.png"}, {"XCoord", "-1"}});
    files.AddButton(0, Picture::Close, {31, 8}, 14, 1);
    const std::optional<Theme> theme = files.Load();
    ASSERT_TRUE(theme);
    EXPECT_FALSE(theme->dialog.IsLoaded());
    const auto pieces = [](const auto& strip) { return std::pair(strip.headEnd, strip.tailStart); };
    EXPECT_EQ(pieces(theme->left), std::pair(20, 21));
    EXPECT_EQ(pieces(theme->bottom), std::pair(6, 7));
    EXPECT_EQ(theme->maximize.PlaceIn(100), QRect(70, 2, 18, 12));
    EXPECT_EQ(theme->close.PlaceIn(100), QRect(86, 1, 15, 8));
    EXPECT_FALSE(theme->restore.bitmap.IsLoaded());
    EXPECT_FALSE(theme->minimize.bitmap.IsLoaded());
    EXPECT_EQ(theme->m_clrInactiveText, QColor(Qt::white));
    EXPECT_FALSE(theme->m_bUsesTran);
}

TEST(ThemeTest, RefusesWhatIsIncompleteOrHostile) {
    const QByteArray top = Encode(MakePlaces(Picture::Top, {40, 61}), "png");
    const QByteArray left = Encode(MakePlaces(Picture::Left, {9, 50}), "bmp");
    const struct {
        const char* what;
        Change change;
        qreal scale = 1;
    } rows[] = {
        {"a strip that is not named", Setting("Bottom", {})},
        {"a strip that is missing", Setting("Right", "missing.png")},
        {"ButtonImgCount 0", Setting("ButtonImgCount", "0")},
        {"ButtonCount 65", Setting("ButtonCount", "65")},
        {"a button without a section", Setting("ButtonCount", "1")},
        {"a split below 0", Setting("LeftTopHeight", "-1")},
        {"a split too large", Setting("BottomBotHeight", "16385")},
        {"a text place below 0", Setting("TextShiftVert", "-2147483648")},
        {"a button place below 0", Adding(1, -1)},
        {"three maximize buttons", Adding(3, 14)},
        {"no picture", Writing(kTop, "GIF89a or whatever this is, it is long enough for a header")},
        {"a cut PNG", Writing(kTop, top.first(top.size() / 2))},
        {"a cut BMP", Writing(kLeft, left.chopped(1))},
        {"a BMP of a negative width", Writing(kLeft, BmpOf(-9, 50))},
        {"a BMP of the lowest height", Writing(kLeft, BmpOf(9, INT_MIN))},
        {"a BMP of 0 bits a pixel", Writing(kLeft, QByteArray(left).replace(28, 1, "\0", 1))},
        {"a PNG of 1,001,000 pixels", Writing(kTop, BlackPng(1001, 1000))},
        {"a strip of 1,025 pixels", Writing(kTop, BlackPng(1025, 40))},
        {"16-bit colours", Writing("top@2x.png", BlackPng(2000, 2000, QImage::Format_RGBA64)), 2},
        {"a rendering too high", Writing("top@2x.png", BlackPng(2000, 2001)), 2},
        {"more than 4,000,000 pixels in all", Writing(kTop, BlackPng(1000, 1000)), 2},
        {"a file of 2 GB",
         [](SyntheticTheme& files) {
             ASSERT_EQ(::truncate(files.File(kTop).toUtf8(), off_t{2} << 30), 0);
         }},
        {"a link to a picture",
         [](SyntheticTheme& files) {
             ASSERT_EQ(::unlink(files.File(kTop).toUtf8()), 0);
             ASSERT_EQ(::symlink("left.bmp", files.File(kTop).toUtf8()), 0);
         }},
    };
    for (const auto& [what, change, scale] : rows) {
        SyntheticTheme files;
        ASSERT_TRUE(files.Load(scale));
        change(files);
        EXPECT_FALSE(files.Load(scale)) << what;
    }
}

TEST(ThemeTest, RefusesWhatIsNoThemeAndScalesThatAreNone) {
    const SyntheticTheme files;
    ASSERT_TRUE(files.Load());
    for (const char* name : {"none.ini", ".", "top.png"})
        EXPECT_FALSE(Theme::Load(files.File(name), 1)) << name;
    for (const qreal scale : {0.0, 1e9, std::nan("")})
        EXPECT_FALSE(files.Load(scale)) << scale;
    const QByteArray text = files.File("theme.ini").toUtf8();
    ASSERT_EQ(::truncate(text.constData(), off_t{2} << 30), 0);
    EXPECT_FALSE(Theme::Load(QString::fromUtf8(text), 1));
}

TEST(ThemeTest, DoesNotUnpackWhatNoPixelNeeds) {
    SyntheticTheme files;
    files.Write(kTop, PngWithLongTexts());
    files.Set("DialogBmp", "dialog.png");
    files.Write("dialog.png", BlackPng(1000, 1000, QImage::Format_RGBA8888));
    files.Write("dialog@1.5x.png", BlackPng(2000, 2000, QImage::Format_RGBA8888));
    const long before = PeakMegabytes();
    const std::optional<Theme> theme = files.Load(1.5);
    EXPECT_LT(PeakMegabytes() - before, 64);
    ASSERT_TRUE(theme);
    EXPECT_EQ(theme->dialog.Width(), 1500);
}

TEST(ThemeTest, ReadsAnyKindOfPngAndBmpOverBlack) {
    QImage places = MakePlaces(Picture::Top, {40, 61});
    places.setPixel(3, 4, kKeyColour);
    QImage clear = places.convertToFormat(QImage::Format_ARGB32);
    clear.setPixel(5, 6, qRgba(200, 100, 50, 128));
    clear.setPixel(6, 6, qRgba(255, 0, 255, 0));
    const QImage indexed = places.convertToFormat(QImage::Format_Indexed8);
    QImage overBlack = places;
    overBlack.setPixel(5, 6, qRgb(100, 50, 25));
    overBlack.setPixel(6, 6, qRgb(0, 0, 0));
    const std::pair<QByteArray, QImage> rows[] = {
        {Encode(places, "png"), places},
        {Encode(places, "bmp"), places}, // the name is that of a PNG: the content counts
        {Encode(indexed, "bmp"), indexed},
        {Encode(places.convertToFormat(QImage::Format_RGBA64), "png"), places},
        {Encode(clear, "png"), overBlack},
    };
    for (const auto& [file, expected] : rows) {
        SyntheticTheme files;
        files.Write(kTop, file);
        CSkinBitmap bitmap;
        ASSERT_TRUE(bitmap.LoadFromFile(files.File(kTop), 1));
        EXPECT_EQ(bitmap.Image(), expected.convertToFormat(QImage::Format_RGB32));
        EXPECT_FALSE(bitmap.LoadFromFile(files.File(kTop), 1)); // it holds one already
    }
}

TEST(ThemeTest, TakesTheRenderingForTheScale) {
    SyntheticTheme files;
    const QImage larger = MakePlaces(Picture::Right, {60, 92}); // 61 rows times 1.5, rounded
    const QImage largest = MakePlaces(Picture::Bottom, {80, 122});
    const auto expectPictures = [&](const std::vector<std::pair<qreal, Picture>>& pictures) {
        for (const auto& [scale, picture] : pictures) {
            CSkinBitmap bitmap;
            EXPECT_TRUE(bitmap.LoadFromFile(files.File(kTop), scale));
            EXPECT_EQ(bitmap.Image().size(), QSize(qRound(40 * scale), qRound(61 * scale)));
            EXPECT_EQ(qBlue(bitmap.Image().pixel(5, 5)), static_cast<int>(picture)) << scale;
        }
    };
    using enum Picture;
    expectPictures({{1.5, Top}, {3, Top}});
    files.Write("top@2x.png", largest);
    expectPictures({{1, Top}, {1.25, Bottom}, {1.5, Bottom}});
    files.Write("top@1.5x.png", larger);
    expectPictures({{0.75, Top}, {1.25, Right}, {1.75, Bottom}, {3, Bottom}});

    const std::optional<Theme> middle = files.Load(1.5);
    const std::optional<Theme> large = files.Load(2);
    ASSERT_TRUE(middle && large);
    EXPECT_EQ(middle->top.bitmap.Image(), larger);
    EXPECT_EQ(large->top.bitmap.Image(), largest);
    EXPECT_EQ(middle->top.headEnd, 11); // 7 times 1.5, rounded
    EXPECT_EQ(middle->top.tailStart, 60 - 14);
    EXPECT_EQ(middle->m_nTopHeight, 46);
    EXPECT_EQ(large->top.headEnd, 14);
    EXPECT_EQ(large->m_nTextShift, 50);

    files.Write("top@2x.png", QByteArray("damaged"));
    EXPECT_FALSE(files.Load(2));
    EXPECT_TRUE(files.Load(1.5));
}

TEST(ThemeTest, HolesKeepHardEdgesAtAnyScale) {
    // White on the left, a hole on the right.
    QImage image(16, 8, QImage::Format_RGB32);
    image.fill(Qt::white);
    for (int y = 0; y < 8; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)) + 6, 10, kKeyColour);
    SyntheticTheme files;
    files.Write("hole.png", image);
    for (const qreal scale : {0.75, 1.25, 2.0, 3.0}) {
        CSkinBitmap bitmap;
        ASSERT_TRUE(bitmap.LoadFromFile(files.File("hole.png"), scale));
        for (int y = 0; y < bitmap.Height(); ++y) {
            int white = 0;
            for (int x = 0; x < bitmap.Width(); ++x) {
                const QRgb pixel = bitmap.Image().pixel(x, y);
                const int distance = 255 - std::min({qRed(pixel), qGreen(pixel), qBlue(pixel)});
                ASSERT_TRUE(pixel == kKeyColour || distance <= 2)
                    << scale << ": " << std::hex << pixel;
                white += pixel != kKeyColour;
            }
            EXPECT_NEAR(white, 6 * scale, 0.5) << scale;
        }
    }
}
