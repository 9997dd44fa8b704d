#include "library/MediaList.h"

#include "library/MergeSort.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/Printers.h"

#include <numeric>
#include <random>

namespace {

/// Titled a, b, c ... in the order in which they come.
CTrackRecord& Add(CMediaList& list, const char* path = "") {
    return AddTrack(list, QLatin1String(path), QChar(u'a' + list.GetCount()));
}

std::string Order(const CMediaList& list) {
    QString order;
    for (int i = 0; i < list.GetCount(); ++i)
        order += list[i]->m_strTitle;
    return order.toStdString();
}

} // namespace

TEST(MediaListTest, PathsAreFoundAfterChanges) {
    CMediaList list("List", MEDIA_TYPE_ALL, 0);
    for (const char* path : {"/a", "/B", "/c", "/d", "/c"})
        Add(list, path);
    const auto find = [&list](const char* path) { return list.FindPath(QLatin1String(path)); };
    EXPECT_EQ(find("/b"), -1) << "the case counts";
    EXPECT_EQ(find("/c"), 2) << "the first of both";
    list.SetPath(2, "/z");
    EXPECT_EQ(find("/c"), 4);
    EXPECT_EQ(list.RemoveIf([](const CTrackRecord& track) { return track.m_iIndex % 2 == 0; }),
              (std::vector<int>{0, 2, 4}));
    EXPECT_EQ(find("/d"), 1);
    EXPECT_EQ(find("/z"), -1);
    EXPECT_TRUE(!list[-1] && !list[2]);
    list.m_pCdCache = std::make_unique<CCdTrackCache>();
    list.m_bModified = list.m_iSourceType = 1;
    list.ClearAll();
    EXPECT_TRUE(list.GetCount() == 0 && !list.m_pCdCache && !list.m_bModified);
    EXPECT_EQ(list.m_iSourceType, -1);
}

TEST(SortTest, EachColumnHasItsKey) {
    using R = CTrackRecord;
    const auto texts = [](QString R::*text, const char* values) {
        return [text, values](R& track, int i) {
            track.*text = QString::fromLatin1(values).section(u' ', i, i);
        };
    };
    const struct {
        const char* what;
        unsigned bit;
        int count; ///< of tracks
        std::function<void(R&, int)> fill;
        const char* ascending;
        const char* descending;
    } rows[] = {
        {"checks", 0, 2, [](R& track, int i) { track.m_bChecked = i == 0; }, "ba", "ab"},
        {"any case", 0x2, 3, texts(&R::m_strArtist, "beta Alpha BETA"), "bac", "acb"},
        {"by value", 0x8000, 3, texts(&R::m_strTrackNumber, "10/12 9 none"), "cba", "abc"},
        {"duration", 0x10, 2, [](R& track, int i) { track.m_nDuration = 600000 - i; }, "ba", "ab"},
        {"sizes 4 GiB apart are equal", 0x20, 3,
         [](R& track, int i) { track.m_nFileSize = i == 0 ? (1ull << 32) + 5 : 6 - i; }, "cab",
         "abc"},
        {"no column of this bit", 0x20000, 2, [](R&, int) {}, "ab", "ab"}};
    for (const auto& row : rows) {
        for (const int direction : {1, 0}) {
            CMediaList list("List", MEDIA_TYPE_ALL, 1);
            for (int i = 0; i < row.count; ++i)
                row.fill(Add(list), i);
            const std::string before = Order(list);
            const int changed = list.SortBy(row.bit, direction);
            EXPECT_EQ(Order(list), direction ? row.ascending : row.descending) << row.what;
            EXPECT_EQ(changed != 0, Order(list) != before) << row.what;
        }
    }
}

TEST(SortTest, AnyCompareIsSafe) {
    std::mt19937 random(7);
    for (const int count : {0, 1, 2, 3, 17, 1000}) {
        std::vector<int> items(count);
        std::iota(items.begin(), items.end(), 0);
        const auto all = items;
        MergeSort(items, [&random](int, int) { return random() % 2 == 0; });
        std::sort(items.begin(), items.end());
        EXPECT_EQ(items, all) << "every item is there once";
    }
}

TEST(MoveTest, CheckedTracksMoveByOneAsABlock) {
    const struct {
        const char* checked; ///< one character per track, x for checked
        const char* up;
        const char* upChanged;
        const char* down;
        const char* downChanged;
    } rows[] = {{"..x.", "acbd", "0110", "abdc", "0011"}, {".xx.", "bcad", "1110", "adbc", "0111"},
                {"x...", "abcd", "0000", "bacd", "1100"}, {"xx.x", "abdc", "0011", "cabd", "1110"},
                {"xxxx", "abcd", "0000", "abcd", "0000"}, {"x.x.", "acbd", "0110", "badc", "1111"}};
    for (const auto& row : rows) {
        for (const bool up : {true, false}) {
            CMediaList list("List", MEDIA_TYPE_ALL, 1);
            for (int i = 0; i < 4; ++i) {
                Add(list).m_bChecked = row.checked[i] == 'x';
                list[i]->m_iRow = 100 + i;
            }
            std::vector<int> changed;
            const int moved = up ? list.MoveCheckedUp(changed) : list.MoveCheckedDown(changed);
            std::string flags;
            for (int i = 0; i < 4; ++i) {
                flags += std::to_string(changed[i]);
                EXPECT_EQ(list[i]->m_iRow, 100 + i) << "each row keeps its number";
            }
            EXPECT_EQ(Order(list), up ? row.up : row.down) << row.checked;
            EXPECT_EQ(flags, up ? row.upChanged : row.downChanged);
            EXPECT_EQ(moved != 0, flags != "0000");
        }
    }
}
