#include "tags/TrackTags.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/library/LibraryFixture.h"

#include <filesystem>
#include <set>

namespace {

constexpr unsigned kAllColumns = 0x1FFFF;
enum Column { Title = 1, Artist, Album, Composer = 10, Disk, TrackNumber = 16, Year };

/// Rows: 1 title of the collection, 2 its track, 3 its playlist file, 4 title of All Music, 5-6 the
/// same track and one whose path differs in case.
struct TrackEditTest : LibraryFixture {
    TrackEditTest() {
        AddTrack(m_collection, m_path);
        AddTrack(m_collection, "/c/list.m3u");
        AddTrack(m_all, m_path);
        AddTrack(m_all, m_path.toUpper());
        m_view.SetColumns(kAllColumns);
        m_view.FillGrid();
        m_grid.show();
    }

    static void AddTrack(CMediaList& list, const QString& path) {
        Append(list, path);
        list[list.GetCount() - 1]->m_strArtist = "old";
    }
    [[nodiscard]] bool Allows(int row, int col) {
        GridNotification notification{.code = GVN_BEGINLABELEDIT, .row = row, .col = col};
        m_view.OnNotify(notification);
        return notification.allowed;
    }
    void Edit(int row, int col, const QString& text) {
        Type({row, col}, text);
        QTest::keyClick(m_grid.focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(m_grid.IsEditing());
        AwaitWriter();
    }
    [[nodiscard]] CTrackInfo Tags() const {
        CTrackInfo info;
        EXPECT_EQ(ReadTrackTags(m_path, info), 0);
        return info;
    }

    const QString m_path = m_scratch.Write("song.mp3", ReadFile(MediaFile("mutagen-v23.mp3")));
};

} // namespace

TEST_F(TrackEditTest, SomeColumnsOfTheCollectionCanBeEdited) {
    const std::set<int> allowed{Title, Artist, Album, Composer, Disk, TrackNumber, Year};
    for (int column = -1; column <= m_grid.GetColumnCount(); ++column)
        EXPECT_EQ(Allows(2, column), allowed.contains(column)) << column;
    AddTrack(m_collection, "/c/without a row yet.mp3");
    for (const int row : {0, 1, 4, 5, 99})
        EXPECT_FALSE(Allows(row, Title)) << row;
    EXPECT_TRUE(Allows(3, Title)) << "the name of a playlist";
    EXPECT_FALSE(Allows(3, Artist));

    m_selection.m_bVisible = 1;
    for (const QString& name : QStringList{m_path, "/c/unwritable.m4a", "/c/list.m3u"})
        AddTrack(m_selection, name);
    const struct {
        int type;
        int sourceType;
        const char* allowed; ///< of track, unwritable track and playlist
    } rows[] = {{MEDIA_TYPE_SELECTION, MEDIA_TYPE_COLLECTION, "101"},
                {MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_COLLECTION, "100"},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_ALL, "000"},
                {MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_PHONE, "000"},
                {MEDIA_TYPE_CD, -1, "000"},
                {MEDIA_TYPE_PHONE, -1, "000"}};
    for (const auto& row : rows) {
        m_selection.m_iType = row.type;
        m_selection.m_iSourceType = row.sourceType;
        m_view.FillGrid();
        for (int index = 0; index < 3; ++index)
            EXPECT_EQ(Allows(m_selection[index]->m_iRow, Title), row.allowed[index] == '1')
                << row.type << ' ' << row.sourceType << ' ' << index;
    }
}

TEST_F(TrackEditTest, PlaylistIsRenamed) {
    const QString taken = m_scratch.Write("taken.m3u", "t");
    m_collection.SetPath(1, m_scratch.Write("list.m3u", "#EXTM3U"));
    Edit(3, Title, "Morning");
    EXPECT_EQ(m_collection[1]->m_strPath, m_scratch.File("Morning.m3u"));
    EXPECT_EQ(Text(3, Title), u"Morning");
    const QString renamed = "Évening.M3U";
    for (const QString& typed : QStringList{renamed, "taken", "../out", " ", QString(300, u'x')}) {
        Edit(3, Title, typed); // but for the first none can be
        EXPECT_EQ(m_collection[1]->m_strPath, m_scratch.File(renamed)) << typed.toStdString();
        EXPECT_EQ(Text(3, Title), renamed);
    }
    EXPECT_EQ(ReadFile(m_scratch.File(renamed)), "#EXTM3U");
    EXPECT_EQ(ReadFile(taken), "t");

    Click(3, Album, {}, Qt::RightButton);
    m_collection.RemoveIf([this](const CTrackRecord& track) { return track.m_strPath == m_path; });
    m_view.FillGrid();
    m_view.EditClickedCell();
    ASSERT_TRUE(m_grid.IsEditing()) << "the title, in the row that it has now";
    QTest::keyClicks(m_grid.focusWidget(), "Night");
    m_grid.EndEdit();
    AwaitWriter();
    EXPECT_EQ(m_collection[0]->m_strPath, m_scratch.File("Night.m3u"));
}

TEST_F(TrackEditTest, EditGoesIntoTheFileAndIntoEveryList) {
    CTrackInfo expected = Tags();
    Edit(2, Artist, "old");
    EXPECT_EQ(Tags(), expected) << "nothing was changed";
    expected.m_strArtist = "New artist";
    Edit(2, Artist, expected.m_strArtist);
    EXPECT_EQ(Tags(), expected);
    EXPECT_EQ(Text(2, Artist), expected.m_strArtist);
    EXPECT_EQ(m_all[0]->m_strArtist, expected.m_strArtist);
    EXPECT_EQ(Text(5, Artist), expected.m_strArtist);
    EXPECT_EQ(Text(6, Artist), "old") << "another file";

    Edit(2, Album, QString(40, u'x'));
    EXPECT_EQ(Text(2, Album), QString(30, u'x')) << "what a reading gives";
    Edit(2, Title, "new");
    Edit(2, Title, QString());
    EXPECT_EQ(Text(2, Title), "song");
}

TEST_F(TrackEditTest, RebuildStoresAnOpenEditForItsTrack) {
    AddTrack(m_collection, "/c/another.mp3");
    m_collection[2]->m_strArtist = "before";
    Type({2, Artist}, "new");
    ASSERT_TRUE(m_collection.SortBy(0x2, 1)); // gives the track another row
    m_view.FillGrid();
    EXPECT_FALSE(m_grid.IsEditing());
    AwaitWriter();
    EXPECT_EQ(Tags().m_strArtist, "new");
    EXPECT_EQ(Text(2, Artist) + Text(3, Artist) + Text(4, Artist), u"beforenewold");
    EXPECT_EQ(m_collection[1]->m_strArtist, u"new");
}

TEST_F(TrackEditTest, FailedEditBringsTheOldTextBack) {
    // A file with two names is not rewritten, whoever the user is.
    std::filesystem::create_hard_link(m_path.toStdString(),
                                      m_scratch.File("other.mp3").toStdString());
    const QByteArray before = ReadFile(m_path);
    Edit(2, Artist, "new");
    EXPECT_EQ(Text(2, Artist), "old");
    EXPECT_EQ(ReadFile(m_path), before);
    std::filesystem::remove(m_path.toStdString());
    Edit(2, Artist, "new");
    EXPECT_EQ(Text(2, Artist), "old") << "the file is gone";
    EXPECT_EQ(m_status.news.size(), 2);
}
