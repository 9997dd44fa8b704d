#include "library/MediaList.h"

#include "library/MediaLists.h"
#include "library/MergeSort.h"
#include "library/TrackColumns.h"
#include "tests/fixtures/Printers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

namespace {

CTrackRecord& AddTrack(CMediaList& list, const QString& title, const QString& path = {}) {
    auto track = std::make_unique<CTrackRecord>();
    track->m_strTitle = title;
    track->m_strPath = path;
    track->m_iRow = 100 + list.GetCount();
    list.Append(std::move(track));
    return *list[list.GetCount() - 1];
}

/// One letter per track, in the order of the list.
QString Order(const CMediaList& list) {
    QString order;
    for (int i = 0; i < list.GetCount(); ++i)
        order += list[i]->m_strTitle;
    return order;
}

/// A list whose tracks are titled a, b, c ... and given to `fill` by index.
std::unique_ptr<CMediaList> MakeList(int count,
                                     const std::function<void(CTrackRecord&, int)>& fill) {
    auto list = std::make_unique<CMediaList>(QStringLiteral("List"), MEDIA_TYPE_ALL, 1);
    for (int i = 0; i < count; ++i)
        fill(AddTrack(*list, QString(QChar(u'a' + i))), i);
    return list;
}

/// The exclusive views are globals: a test that sets one gives it back.
struct HitTest : ::testing::Test {
    ~HitTest() override { g_bSelectionOnly = g_bPlaylistOnly = 0; }
};

} // namespace

TEST(MediaListTest, CountsAndTitle) {
    CMediaList list(QStringLiteral("All Music"), MEDIA_TYPE_ALL, 0);
    AddTrack(list, {}, QStringLiteral("/a.mp3")).m_bChecked = 1;
    AddTrack(list, {}, QStringLiteral("/b.M3U")).m_bChecked = 1;
    AddTrack(list, {}, QStringLiteral("/c.m3u"));
    AddTrack(list, {}, QStringLiteral("/100%.mp3"));
    EXPECT_EQ(list.GetTitleText(), QStringLiteral("All Music (2/4)"));
    EXPECT_EQ(list.CountChecked(1), 1);
    EXPECT_EQ(list.CountPlaylists(), 2);
    EXPECT_EQ(list.CountCheckedPlaylists(), 1);
    EXPECT_EQ(list.FindPath(QStringLiteral("/b.m3u")), -1); // the case counts
    AddTrack(list, {}, QStringLiteral("/c.m3u"));
    EXPECT_EQ(list.FindPath(QStringLiteral("/c.m3u")), 2); // the first of both
    list.SetPath(2, QStringLiteral("/z.m3u"));
    EXPECT_EQ(list.FindPath(QStringLiteral("/c.m3u")), 4);
    EXPECT_EQ(list.RemoveIf([](const CTrackRecord& track) { return track.m_iIndex % 2 == 0; }),
              (std::vector<int>{0, 2, 4}));
    EXPECT_EQ(list.FindPath(QStringLiteral("/100%.mp3")), 1);
    EXPECT_EQ(list.FindPath(QStringLiteral("/z.m3u")), -1);
    EXPECT_EQ(list[-1], nullptr);
    EXPECT_EQ(list[2], nullptr);

    list.m_pCdCache = std::make_unique<CCdTrackCache>();
    list.m_bModified = list.m_iSourceType = 1;
    list.ClearAll();
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.m_pCdCache, nullptr);
    EXPECT_EQ(list.m_bModified, 0);
    EXPECT_EQ(list.m_iSourceType, -1);
}

TEST_F(HitTest, RowsAreHitOnlyWhereTheyAreOnScreen) {
    CMediaLists lists;
    CMediaList& all = lists.Add(QStringLiteral("All"), MEDIA_TYPE_ALL, 1);
    CMediaList& selection = lists.Add(QStringLiteral("Selection"), MEDIA_TYPE_SELECTION, 1);
    selection.m_bVisible = 0;
    all.m_iTitleRow = 1;
    for (CMediaList* list : {&all, &selection})
        for (const int row : {2, 3, 3})
            AddTrack(*list, {}).m_iRow = row;

    EXPECT_TRUE(all.IsTitleHit(1));
    EXPECT_FALSE(all.IsTitleHit(2));
    EXPECT_EQ(all.BodyHit(3), 1) << "the first match wins";
    EXPECT_EQ(all.BodyHit(4), -1);
    EXPECT_EQ(selection.BodyHit(2), -1);
    all.m_bExpanded = 0;
    EXPECT_EQ(all.BodyHit(2), -1);
    all.m_bExpanded = 1;

    g_bSelectionOnly = 1;
    EXPECT_FALSE(all.IsTitleHit(1));
    EXPECT_EQ(all.BodyHit(2), -1);
    EXPECT_EQ(selection.BodyHit(2), 0);
    EXPECT_EQ(lists.GetActiveList(), &selection);
    g_bSelectionOnly = 0;
    g_bPlaylistOnly = 1;
    EXPECT_EQ(selection.BodyHit(2), -1);
    EXPECT_EQ(lists.GetActiveList(), nullptr) << "there is no playlist list here";
}

TEST(MediaListsTest, FindsLists) {
    CMediaLists lists;
    CMediaList& collection = lists.Add(QStringLiteral("C"), MEDIA_TYPE_COLLECTION, 1);
    CMediaList& all = lists.Add(QStringLiteral("A"), MEDIA_TYPE_ALL, 1);
    EXPECT_EQ(lists.FindListById(all.m_iId), &all);
    EXPECT_EQ(lists.FindListById(-7), nullptr);
    EXPECT_EQ(lists.FindListByType(MEDIA_TYPE_COLLECTION), &collection);
    all.m_bActive = 1;
    EXPECT_EQ(lists.GetActiveList(), &all);
    all.m_bExpanded = 0;
    EXPECT_EQ(lists.GetActiveList(), nullptr) << "a closed section is no target";
    lists.SetLocation(all, QStringLiteral("/a"));
    lists.SetLocation(all, QStringLiteral("/b"));
    EXPECT_EQ(lists.GetLocation(all.m_iId), QStringLiteral("/b"));
    EXPECT_TRUE(lists.GetLocation(collection.m_iId).isEmpty());
}

TEST(SortTest, EachColumnHasItsKey) {
    const struct {
        const char* what;
        unsigned bit;
        std::vector<std::function<void(CTrackRecord&)>> tracks;
        const char* ascending;
        const char* descending;
    } rows[] = {
        {"checks", 0, {[](auto& t) { t.m_bChecked = 1; }, [](auto&) {}}, "ba", "ab"},
        {"text without regard to case",
         0x2,
         {[](auto& t) { t.m_strArtist = QStringLiteral("beta"); },
          [](auto& t) { t.m_strArtist = QStringLiteral("Alpha"); },
          [](auto& t) { t.m_strArtist = QStringLiteral("BETA"); }},
         "bac",
         "acb"},
        {"numbers by value",
         0x8000,
         {[](auto& t) { t.m_strTrackNumber = QStringLiteral("10/12"); },
          [](auto& t) { t.m_strTrackNumber = QStringLiteral("9"); },
          [](auto& t) { t.m_strTrackNumber = QStringLiteral("none"); }},
         "cba",
         "abc"},
        {"length by duration",
         0x10,
         {[](auto& t) { t.m_nDuration = 600000; }, [](auto& t) { t.m_nDuration = 540000; }},
         "ba",
         "ab"},
        {"sizes 4 GiB apart are equal",
         0x20,
         {[](auto& t) { t.m_nFileSize = (1ull << 32) + 5; }, [](auto& t) { t.m_nFileSize = 5; },
          [](auto& t) { t.m_nFileSize = 4; }},
         "cab",
         "abc"},
        {"no column of this bit", 0x20000, {[](auto&) {}, [](auto&) {}}, "ab", "ab"},
    };
    for (const auto& row : rows) {
        for (const int direction : {1, 0}) {
            const auto list =
                MakeList(static_cast<int>(row.tracks.size()),
                         [&row](CTrackRecord& track, int i) { row.tracks[i](track); });
            const QString before = Order(*list);
            const int changed = list->SortBy(row.bit, direction);
            EXPECT_EQ(Order(*list), QString::fromUtf8(direction ? row.ascending : row.descending))
                << row.what;
            EXPECT_EQ(changed != 0, Order(*list) != before) << row.what;
        }
    }
}

TEST(SortTest, TogglesAndTellsWhetherAnythingMoved) {
    const auto list = MakeList(3, [](CTrackRecord&, int) {});
    EXPECT_FALSE(list->SortBy(kTitleColumn, CMediaList::kToggleDirection)) << "already ascending";
    EXPECT_TRUE(list->SortBy(kTitleColumn, CMediaList::kToggleDirection));
    EXPECT_EQ(Order(*list), QStringLiteral("cba"));
    const auto single = MakeList(1, [](CTrackRecord&, int) {});
    EXPECT_FALSE(single->SortBy(kTitleColumn, CMediaList::kToggleDirection));
    EXPECT_EQ(single->m_bSortAscending, 1) << "flips though there is nothing to sort";
}

TEST(SortTest, AnyCompareIsSafe) {
    std::mt19937 random(7);
    for (const int count : {0, 1, 2, 3, 17, 1000}) {
        std::vector<int> items(count);
        std::iota(items.begin(), items.end(), 0);
        MergeSort(items, [&random](int, int) { return random() % 2 == 0; });
        std::sort(items.begin(), items.end());
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(items[i], i) << "every item is there once";
    }
    // Differences of 32 bits wrap, so that three sizes can follow each other in a circle.
    const auto list = MakeList(
        300, [](CTrackRecord& track, int i) { track.m_nFileSize = i % 3 * 0x60000000ull; });
    list->SortBy(0x20, 1);
    EXPECT_EQ(list->GetCount(), 300);
}

TEST(MoveTest, CheckedTracksMoveByOneAsABlock) {
    const struct {
        const char* checked; ///< one character per track, x for checked
        const char* up;
        const char* upChanged;
        const char* down;
        const char* downChanged;
    } rows[] = {
        {"..x.", "acbd", "0110", "abdc", "0011"}, {".xx.", "bcad", "1110", "adbc", "0111"},
        {"x...", "abcd", "0000", "bacd", "1100"}, {"xx.x", "abdc", "0011", "cabd", "1110"},
        {"xxxx", "abcd", "0000", "abcd", "0000"}, {"x.x.", "acbd", "0110", "badc", "1111"},
    };
    for (const auto& row : rows) {
        for (const bool up : {true, false}) {
            const auto list = MakeList(4, [&row](CTrackRecord& track, int i) {
                track.m_bChecked = row.checked[i] == 'x';
            });
            std::vector<int> changed;
            const int moved = up ? list->MoveCheckedUp(changed) : list->MoveCheckedDown(changed);
            QString flags;
            for (int i = 0; i < 4; ++i) {
                flags += QString::number(changed[i]);
                EXPECT_EQ((*list)[i]->m_iRow, 100 + i) << "each row keeps its number";
            }
            EXPECT_EQ(Order(*list), QString::fromUtf8(up ? row.up : row.down)) << row.checked;
            EXPECT_EQ(flags, QString::fromUtf8(up ? row.upChanged : row.downChanged));
            EXPECT_EQ(moved != 0, flags.contains(u'1'));
        }
    }
}
