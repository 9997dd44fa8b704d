#include "skin/Pictures.h"

// That each picture is there, has its size and is what its source draws, make_theme checks.
TEST(PicturesTest, AreLoadedForTheScale) {
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const QPixmap picture = LoadPicture(PictureId::NewPlaylist, scale); // of four states
        EXPECT_EQ(picture.size(), QSize(4 * qRound(45 * scale), qRound(44 * scale)));
        EXPECT_EQ(picture.devicePixelRatio(), scale);
    }
    EXPECT_EQ(MakeProgramIcon().availableSizes().size(), std::ssize(kProgramIconSides));
}
