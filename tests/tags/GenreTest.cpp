#include "base/SizeText.h"
#include "tags/GenreMenu.h"
#include "tags/GenreTable.h"
#include "tests/fixtures/Printers.h"

#include <gtest/gtest.h>

TEST(GenreTest, TableNamesAndNumbersLeadToEachOther) {
    struct {
        QStringView name;
        int number;
    } const rows[] = {
        {u"BLUES", 0},          {u"Rock", 17},       {u"Comedy", 57},     {u"Psychadelic", 67},
        {u"Bebob", 85},         {u"A capella", 123}, {u"Negerpunk", 133}, {u"Synthpop", 147},
        {u"Thrash Metal", 255}, {u"", 255}};
    for (const auto& row : rows)
        EXPECT_EQ(GenreToId3Number(row.name.toString()), row.number);
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
    struct {
        int id;
        QStringView entry;
    } const rows[] = {{32864, u""},
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
    for (const auto& row : rows)
        EXPECT_EQ(GenreMenu::Entry(row.id), row.entry) << row.id;
}

TEST(SizeTextTest, ChangesUnitsAtPowersOf1024) {
    struct {
        std::uint64_t bytes;
        QStringView text;
    } const rows[] = {{0, u"0 B"},           {1023, u"1023 B"},
                      {1024, u"1.00 KB"},    {1048575, u"1024.00 KB"},
                      {1048576, u"1.00 MB"}, {3'500'000'000, u"3337.86 MB"}};
    for (const auto& row : rows)
        EXPECT_EQ(SizeText(row.bytes), row.text);
}
