#include "skin/Pictures.h"

#include "skin/Colours.h"
#include "tests/fixtures/Contrast.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

constexpr qreal kScales[] = {1, 1.25, 1.5, 2, 3};

struct Expected {
    PictureId id;
    int width;
    int height;
    int states;
};

constexpr Expected kPictures[] = {
    {PictureId::RaisedDisc, 45, 44, 1},
    {PictureId::PressedFrame, 45, 44, 1},
    {PictureId::HoverFrame, 45, 44, 1},
    {PictureId::FocusRing, 45, 44, 1},
    {PictureId::Band, 16, 103, 1},
    {PictureId::NewPlaylist, 180, 44, 4},
    {PictureId::ScanPC, 180, 44, 4},
    {PictureId::CancelAll, 180, 44, 4},
    {PictureId::CopyToPhone, 45, 44, 1},
    {PictureId::CopyToCollection, 45, 44, 1},
    {PictureId::Previous, 45, 44, 1},
    {PictureId::Play, 45, 44, 1},
    {PictureId::Next, 45, 44, 1},
    {PictureId::Pause, 45, 44, 1},
    {PictureId::Volume, 20, 20, 1},
    {PictureId::WarningSign, 40, 40, 1},
    {PictureId::QuestionSign, 40, 40, 1},
    {PictureId::Splash, 400, 240, 1},
    {PictureId::Ok, 45, 44, 1},
    {PictureId::No, 45, 44, 1},
    {PictureId::Close, 45, 44, 1},
    {PictureId::Help, 45, 44, 1},
    {PictureId::Browse, 45, 44, 1},
    {PictureId::About, 400, 240, 1},
    {PictureId::StartScan, 45, 44, 1},
    {PictureId::NewFolder, 45, 44, 1},
    {PictureId::MoveDown, 45, 44, 1},
    {PictureId::MoveUp, 45, 44, 1},
    {PictureId::SavePlaylist, 45, 44, 1},
    {PictureId::ClosePlaylist, 45, 44, 1},
    {PictureId::VolumeChannel, 100, 8, 1},
    {PictureId::VolumeThumb, 12, 20, 1},
    {PictureId::MiniPlayer, 126, 28, 3},
    {PictureId::NormalWindow, 126, 28, 3},
};

QImage Load(PictureId id, qreal scale) {
    QImage image = LoadPicture(id, scale).toImage().convertToFormat(QImage::Format_ARGB32);
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace

TEST(PicturesTest, EachHasItsSizeAtEveryScale) {
    for (const Expected& expected : kPictures) {
        for (const qreal scale : kScales) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(expected.id) << " at " << scale);
            const QPixmap picture = LoadPicture(expected.id, scale);
            ASSERT_FALSE(picture.isNull());
            EXPECT_EQ(picture.devicePixelRatio(), scale);
            EXPECT_EQ(picture.width() % expected.states, 0);
            EXPECT_EQ(picture.width(),
                      expected.states * qRound(expected.width / expected.states * scale));
            EXPECT_EQ(picture.height(), qRound(expected.height * scale));
        }
    }
    const QIcon icon = MakeProgramIcon();
    for (const int side : kProgramIconSides)
        EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;
}

TEST(PicturesTest, GlyphsStandOutFromTheirDiscs) {
    for (const PictureId disc :
         {PictureId::RaisedDisc, PictureId::HoverFrame, PictureId::PressedFrame}) {
        const QImage image = Load(disc, 1);
        for (int y = 12; y < 32; ++y)
            EXPECT_GE(Contrast(image.pixel(22, y), Colours::kQuietText), 4.5) << y;
    }
}

TEST(PicturesTest, TheSplashHasNoColourBetweenItselfAndTheKey) {
    for (const qreal scale : kScales) {
        const QImage image = Load(PictureId::Splash, scale);
        EXPECT_EQ(image.pixel(0, 0), qRgb(255, 0, 255));
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, 1);
            EXPECT_TRUE(pixel == qRgb(255, 0, 255) || qRed(pixel) < 96) << x << " at " << scale;
        }
    }
}

TEST(PicturesTest, DrawingBeginsWithADevicePixel) {
    for (const qreal scale : {1.0, 1.5, 2.0}) {
        const QPixmap picture = LoadPicture(PictureId::Ok, scale);
        QImage page(120, 120, QImage::Format_ARGB32_Premultiplied);
        page.fill(Qt::transparent);
        page.setDevicePixelRatio(scale);
        QPainter painter(&page);
        DrawPicture(painter, {3.3, 5}, picture);
        painter.end();
        page.setDevicePixelRatio(1);
        const QPoint corner(qRound(3.3 * scale), qRound(5 * scale));
        EXPECT_EQ(page.copy(QRect(corner, picture.size())).convertToFormat(QImage::Format_ARGB32),
                  Load(PictureId::Ok, scale))
            << scale;
    }
}
