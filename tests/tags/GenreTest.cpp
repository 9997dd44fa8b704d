#include "base/SizeText.h"
#include "tags/GenreMenu.h"
#include "tags/GenreTable.h"
#include "tests/fixtures/Printers.h"

#include <gtest/gtest.h>

#include <utility>

TEST(GenreTest, TableNamesAndNumbersLeadToEachOther) {
    const std::pair<QStringView, int> rows[] = {
        {u"BLUES", 0},          {u"Rock", 17},       {u"Comedy", 57},     {u"Psychadelic", 67},
        {u"Bebob", 85},         {u"A capella", 123}, {u"Negerpunk", 133}, {u"Synthpop", 147},
        {u"Thrash Metal", 255}, {u"", 255}};
    for (const auto& [key, value] : rows)
        EXPECT_EQ(GenreToId3Number(key.toString()), value);
    for (int number = -1; number <= 255; ++number) {
        QString name = QStringLiteral("kept");
        GenreFromId3Number(name, number);
        if (number >= 0 && number <= 147)
            EXPECT_EQ(GenreToId3Number(name), number);
        else
            EXPECT_EQ(name, u"kept");
    }
}

TEST(GenreTest, MenuIdsRunThroughAllGroups) {
    const auto& groups = GenreMenu::Groups();
    ASSERT_EQ(groups.size(), 25U);
    EXPECT_EQ(groups[8].name, u"Electronica/Dance");
    EXPECT_EQ(groups[8].firstId, 32938);
    const std::pair<int, QStringView> rows[] = {{32864, u""},
                                                {32865, u"Ambient/Dream Pop"},
                                                {32883, u"Straight Edge Punk"},
                                                {32884, u"Acoustic Blues"},
                                                {32922, u"Motown"},
                                                {32938, u"Acid House"},
                                                {32997, u"Ballroom"},
                                                {33030, u"Alternative Metal"},
                                                {33071, u"General Soundtrack"},
                                                {33110, u"General World"},
                                                {33111, u""}};
    for (const auto& [key, value] : rows)
        EXPECT_EQ(GenreMenu::Entry(key), value) << key;
}

TEST(SizeTextTest, ChangesUnitsAtPowersOf1024) {
    const std::pair<std::uint64_t, QStringView> rows[] = {
        {0, u"0 B"},           {1023, u"1023 B"},
        {1024, u"1.00 KB"},    {1048575, u"1024.00 KB"},
        {1048576, u"1.00 MB"}, {3'500'000'000, u"3337.86 MB"}};
    for (const auto& [key, value] : rows)
        EXPECT_EQ(SizeText(key), value);
}
