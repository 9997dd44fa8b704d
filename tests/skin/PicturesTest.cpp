#include "skin/Pictures.h"

#include <QImage>

// That each picture is there, has its size and is what its source draws, make_theme checks.
TEST(PicturesTest, AreLoadedForTheScale) {
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const QPixmap picture = LoadPicture(PictureId::NewPlaylist, scale); // of four states
        EXPECT_EQ(picture.size(), QSize(4 * qRound(45 * scale), qRound(44 * scale)));
        EXPECT_EQ(picture.devicePixelRatio(), scale);
    }
    EXPECT_EQ(MakeProgramIcon().availableSizes().size(), std::ssize(kProgramIconSides));
}

TEST(PicturesTest, DrawingBeginsWithADevicePixel) {
    constexpr qreal kScale = 1.5;
    const QPixmap picture = LoadPicture(PictureId::Ok, kScale);
    QImage expected = picture.toImage();
    expected.setDevicePixelRatio(1);
    QImage page(120, 120, expected.format());
    page.fill(Qt::transparent);
    page.setDevicePixelRatio(kScale);
    QPainter painter(&page);
    DrawPicture(painter, {3.3, 5}, picture);
    painter.end();
    page.setDevicePixelRatio(1);
    const QPoint corner(qRound(3.3 * kScale), qRound(5 * kScale));
    EXPECT_EQ(page.copy(QRect(corner, picture.size())), expected);
}
