#include "dialogs/SplashScreenEx.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QTest>

TEST(SplashTest, HasTheShapeOfItsPictureAndGoesWithItsTime) {
    using namespace std::chrono_literals;
    constexpr QColor kKey(255, 0, 255);
    CSplashScreenEx splash(nullptr, "Text", 1ms);
    EXPECT_FALSE(splash.SetBitmap(static_cast<PictureId>(9999), kKey));
    splash.Show();
    EXPECT_FALSE(splash.isVisible()) << "nothing to show";
    ASSERT_TRUE(splash.SetBitmap(PictureId::Splash, kKey));
    EXPECT_EQ(splash.size(), QSize(400, 240));
    const QImage picture = LoadPicture(PictureId::Splash, 1).toImage();
    for (const QPoint place : {QPoint(0, 0), QPoint(399, 0), QPoint(200, 120), QPoint(200, 0)})
        EXPECT_EQ(splash.mask().contains(place), picture.pixelColor(place) != kKey);
    splash.Show();
    EXPECT_TRUE(splash.isVisible());
    EXPECT_EQ(splash.geometry().center(), QGuiApplication::primaryScreen()->geometry().center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !splash.isVisible(); }));
}
