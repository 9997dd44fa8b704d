#include "base/SizeText.h"
#include "tags/GenreMenu.h"
#include "tags/GenreTable.h"
#include "tests/fixtures/Printers.h"

#include <gtest/gtest.h>

#include <limits>

TEST(GenreTableTest, NamesAndNumbersLeadToEachOther) {
    struct {
        const char* name;
        int number;
    } const rows[] = {{"BLUES", 0},
                      {"Rock", 17},
                      {"Comedy", 57},
                      {"Psychadelic", 67},
                      {"Bebob", 85},
                      {"A capella", 123},
                      {"Britpop", 132},
                      {"Negerpunk", 133},
                      {"Trash Metal", 144},
                      {"Synthpop", 147},
                      {"Thrash Metal", 255},
                      {"Brit Pop", 255},
                      {"", 255}};
    for (const auto& row : rows)
        EXPECT_EQ(GenreToId3Number(QString::fromLatin1(row.name)), row.number) << row.name;
    for (int number = 0; number <= 147; ++number) {
        QString name;
        GenreFromId3Number(name, number);
        EXPECT_EQ(GenreToId3Number(name), number);
    }
    for (const int number : {-1, 148, 255}) {
        QString name = QStringLiteral("kept");
        GenreFromId3Number(name, number);
        EXPECT_EQ(name, QStringLiteral("kept"));
    }
}

TEST(GenreMenuTest, IdsRunThroughAllGroups) {
    struct {
        const char* group;
        int firstId;
    } const starts[] = {{"Alternative & Punk", 32865},
                        {"Children's Music", 32898},
                        {"Electronica/Dance", 32938},
                        {"Holiday", 32992},
                        {"Industrial", 33011},
                        {"Metal", 33030},
                        {"R&B", 33066},
                        {"Soundtrack", 33071},
                        {"World", 33087}};
    const auto& groups = GenreMenu::Groups();
    EXPECT_EQ(groups.size(), 25U);
    std::size_t found = 0;
    std::size_t entries = 0;
    for (const GenreMenu::Group& group : groups) {
        entries += group.entries.size();
        for (const auto& start : starts)
            found += group.name == QLatin1StringView(start.group) && group.firstId == start.firstId;
    }
    EXPECT_EQ(found, std::size(starts));
    EXPECT_EQ(entries, 246U);

    struct {
        int id;
        const char* entry;
    } const rows[] = {{32864, ""},
                      {32865, "Ambient/Dream Pop"},
                      {32883, "Straight Edge Punk"},
                      {32884, "Acoustic Blues"},
                      {32922, "Motown"},
                      {32997, "Ballroom"},
                      {33110, "General World"},
                      {33111, ""}};
    for (const auto& row : rows)
        EXPECT_EQ(GenreMenu::Entry(row.id), QLatin1StringView(row.entry)) << row.id;
}

TEST(SizeTextTest, ChangesUnitsAtPowersOf1024) {
    struct {
        std::uint64_t bytes;
        const char* text;
    } const rows[] = {{0, "0 B"},           {1023, "1023 B"},
                      {1024, "1.00 KB"},    {1048575, "1024.00 KB"},
                      {1048576, "1.00 MB"}, {3'500'000'000, "3337.86 MB"}};
    for (const auto& row : rows)
        EXPECT_EQ(SizeText(row.bytes), QLatin1StringView(row.text));
}
