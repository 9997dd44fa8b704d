#include "tags/GenreMenu.h"
#include "tags/GenreTable.h"
#include "tests/fixtures/Printers.h"

TEST(GenreTest, TableNamesAndNumbersLeadToEachOther) {
    const std::pair<QStringView, int> rows[] = {
        {u"BLUES", 0}, {u"Psychadelic", 67}, {u"Synthpop", 147}, {u"Thrash Metal", 255}};
    for (const auto& [name, number] : rows)
        EXPECT_EQ(GenreToId3Number(name.toString()), number);
    for (int number = -1; number <= 148; ++number) {
        QString name = "kept";
        GenreFromId3Number(name, number);
        EXPECT_EQ(GenreToId3Number(name), number >= 0 && number < 148 ? number : 255);
    }
}

TEST(GenreTest, MenuIdsRunThroughAllGroups) {
    EXPECT_EQ(GenreMenu::Groups().size(), 25U);
    EXPECT_EQ(GenreMenu::Groups()[8].firstId, 32938);
    const std::pair<int, QStringView> rows[] = {
        {32864, u""},           {32865, u"Ambient/Dream Pop"}, {32883, u"Straight Edge Punk"},
        {32938, u"Acid House"}, {33110, u"General World"},     {33111, u""}};
    for (const auto& [id, name] : rows)
        EXPECT_EQ(GenreMenu::Entry(id), name) << id;
}
