#include "app/WindowPlacement.h"

const QRect kWorkArea(0, 20, 1280, 780); // right edge 1280, bottom edge 800

TEST(WindowPlacementTest, FirstRun) {
    const WindowPlaces places = FirstRunPlaces(kWorkArea);
    EXPECT_EQ(places.normal, QRect(256, 122, 768, 576));
    EXPECT_EQ(places.mini, QRect(10, 700, 400, 89));
}

TEST(WindowPlacementTest, SavedPlacesAreMended) {
    const QRect kSmallest(0, 0, 640, 480);
    const std::tuple<QRect, QRect, QRect> rows[] = {
        {kWorkArea, {5, 6, 800, 600}, {5, 6, 800, 600}},
        {kWorkArea, {0, 0, 1280, 780}, {0, 0, 1280, 780}},
        {kWorkArea, {0, 0, 1281, 781}, kSmallest},
        {kWorkArea, {1270, 790, 640, 480}, {1270, 790, 640, 480}},
        {kWorkArea, {1271, 791, 640, 480}, kSmallest},
        {kWorkArea, {-1, -1, 640, 480}, kSmallest},
        {{0, 0, 320, 200}, {0, 0, 300, 190}, kSmallest}};
    CTrackDeckSettings settings;
    for (const auto& [workArea, saved, mended] : rows) {
        saved.getRect(&settings.m_nMainPosX, &settings.m_nMainPosY, &settings.m_nMainSizeX,
                      &settings.m_nMainSizeY);
        EXPECT_EQ(SavedPlaces(settings, workArea).normal, mended)
            << saved.x() << ' ' << saved.width();
    }
    const QPoint minis[][2] = {{{7, 8}, {7, 8}}, {{-5, -5}, {0, 0}}, {{2000, 2000}, {880, 711}}};
    for (const auto& [saved, mended] : minis) {
        settings.m_nMiniPosX = saved.x();
        settings.m_nMiniPosY = saved.y();
        EXPECT_EQ(SavedPlaces(settings, kWorkArea).mini, QRect(mended, QSize(400, 89)));
    }
}
