#include "grid/GridCellBase.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/MediaFiles.h"
#include "tests/library/CommandsFixture.h"

#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

namespace {

constexpr unsigned kAllColumns = 0x1FFFF;
enum Column {
    Check,
    Title,
    Artist,
    Album,
    Genre,
    Length,
    Composer = 10,
    Disk,
    TrackNumber = 16,
    Year
};

/// Rows: 1 title of the collection, 2 its track, 3 its playlist file, 4 title of All Music, 5-6 the
/// same track and one whose path differs in case.
class TrackEditTest : public CommandsFixture {
protected:
    TrackEditTest() {
        AddTrack(m_collection, m_path);
        AddTrack(m_collection, QStringLiteral("/c/list.m3u"));
        AddTrack(m_all, m_path);
        AddTrack(m_all, m_path.toUpper());
        m_view.SetColumns(kAllColumns);
        m_view.FillGrid();
        m_grid.SetNotifyHandler(
            [this](GridNotification& notification) { m_view.OnNotify(notification); });
        m_grid.resize(900, 400);
        m_grid.show();
    }

    static void AddTrack(CMediaList& list, const QString& path) {
        auto track = std::make_unique<CTrackRecord>();
        track->m_strPath = path;
        track->m_strArtist = QStringLiteral("old");
        list.Append(std::move(track));
    }
    [[nodiscard]] QString Text(int row, int col) const {
        return m_grid.GetCell(row, col)->GetText();
    }
    [[nodiscard]] bool Allows(int row, int col) {
        GridNotification notification{.code = GVN_BEGINLABELEDIT, .row = row, .col = col};
        m_view.OnNotify(notification);
        return notification.allowed;
    }
    /// Opens the editor of a cell and types into it.
    void Type(int row, int col, const QString& text) {
        m_grid.SetFocusCell({row, col});
        QTest::keyClick(&m_grid, Qt::Key_F2);
        ASSERT_TRUE(m_grid.IsEditing());
        QTest::keyClick(m_grid.focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(m_grid.focusWidget(), Qt::Key_Delete);
        QTest::keyClicks(m_grid.focusWidget(), text);
    }
    void Edit(int row, int col, const QString& text) {
        Type(row, col, text);
        QTest::keyClick(m_grid.focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(m_grid.IsEditing());
        AwaitWriter();
    }
    [[nodiscard]] CTrackInfo Tags() const {
        CTrackInfo info;
        EXPECT_EQ(ReadTrackTags(m_path, info), 0);
        return info;
    }

    const QString m_path = m_scratch.Write(QStringLiteral("song.mp3"),
                                           ReadFile(MediaFile(QStringLiteral("mutagen-v23.mp3"))));
};

} // namespace

TEST_F(TrackEditTest, SomeColumnsOfTheCollectionCanBeEdited) {
    std::vector<int> columns;
    for (int column = -1; column <= m_grid.GetColumnCount(); ++column)
        if (Allows(2, column))
            columns.push_back(column);
    EXPECT_EQ(columns, (std::vector<int>{Title, Artist, Album, Composer, Disk, TrackNumber, Year}));
    AddTrack(m_collection, QStringLiteral("/c/without a row yet.mp3"));
    for (const int row : {0, 1, 4, 5, 99})
        EXPECT_FALSE(Allows(row, Title)) << row;
    EXPECT_TRUE(Allows(3, Title)) << "the name of a playlist";
    EXPECT_FALSE(Allows(3, Artist));

    CMediaList& copies = m_selection;
    copies.m_bVisible = 1;
    AddTrack(copies, m_path);
    AddTrack(copies, QStringLiteral("/c/unwritable.m4a"));
    AddTrack(copies, QStringLiteral("/c/list.m3u"));
    const struct {
        int type;
        int sourceType;
        bool allows;
    } rows[] = {{MEDIA_TYPE_SELECTION, MEDIA_TYPE_COLLECTION, true},
                {MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_COLLECTION, true},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_ALL, false},
                {MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_PHONE, false},
                {MEDIA_TYPE_CD, -1, false},
                {MEDIA_TYPE_PHONE, -1, false}};
    for (const auto& row : rows) {
        copies.m_iType = row.type;
        copies.m_iSourceType = row.sourceType;
        m_view.FillGrid();
        EXPECT_EQ(Allows(copies[0]->m_iRow, Title), row.allows) << row.type << row.sourceType;
        EXPECT_FALSE(Allows(copies[1]->m_iRow, Title));
        const bool isEntry = row.type == MEDIA_TYPE_PLAYLIST;
        EXPECT_EQ(Allows(copies[2]->m_iRow, Title), row.allows && !isEntry) << row.type;
    }
}

TEST_F(TrackEditTest, PlaylistIsRenamed) {
    const QString taken = m_scratch.Write(QStringLiteral("taken.m3u"), "t");
    m_collection.SetPath(1, m_scratch.Write(QStringLiteral("list.m3u"), "#EXTM3U"));
    m_collection[1]->m_strTitle = QStringLiteral("list");
    m_view.FillGrid();
    const struct {
        QString typed;
        QString name; ///< of the file afterwards
        QString title;
    } rows[] = {
        {QStringLiteral("Morning"), QStringLiteral("Morning.m3u"), {}},
        {QStringLiteral("Évening.M3U"), QStringLiteral("Évening.M3U"), {}},
        {QStringLiteral("taken"), QStringLiteral("Évening.M3U"), QStringLiteral("Évening.M3U")},
        {QStringLiteral("../out"), QStringLiteral("Évening.M3U"), QStringLiteral("Évening.M3U")},
        {QStringLiteral(" "), QStringLiteral("Évening.M3U"), QStringLiteral("Évening.M3U")},
        {QString(300, u'x'), QStringLiteral("Évening.M3U"), QStringLiteral("Évening.M3U")}};
    for (const auto& row : rows) {
        Edit(3, Title, row.typed);
        EXPECT_EQ(m_collection[1]->m_strPath, m_scratch.File(row.name)) << row.typed.toStdString();
        EXPECT_EQ(Text(3, Title), row.title.isEmpty() ? row.typed : row.title);
        EXPECT_EQ(ReadFile(m_scratch.File(row.name)), "#EXTM3U");
    }
    EXPECT_EQ(ReadFile(taken), "t");

    GridNotification click{.code = NM_RCLICK, .row = 3, .col = Album};
    m_view.OnNotify(click);
    EXPECT_TRUE(m_collection[1]->m_bChecked);
    m_collection.RemoveIf([this](const CTrackRecord& track) { return track.m_strPath == m_path; });
    m_view.FillGrid();
    m_view.EditClickedCell();
    ASSERT_TRUE(m_grid.IsEditing()) << "the title, in the row that it has now";
    QTest::keyClicks(m_grid.focusWidget(), QStringLiteral("Night"));
    m_grid.EndEdit();
    AwaitWriter();
    EXPECT_EQ(m_collection[0]->m_strPath, m_scratch.File(QStringLiteral("Night.m3u")));
}

TEST_F(TrackEditTest, EditGoesIntoTheFileAndIntoEveryList) {
    CTrackInfo expected = Tags();
    Edit(2, Artist, QStringLiteral("old"));
    EXPECT_EQ(Tags(), expected) << "nothing was changed";
    expected.m_strArtist = QStringLiteral("New artist");
    Edit(2, Artist, expected.m_strArtist);
    EXPECT_EQ(Tags(), expected);
    EXPECT_EQ(m_collection[0]->m_strArtist, expected.m_strArtist);
    EXPECT_EQ(m_all[0]->m_strArtist, expected.m_strArtist);
    EXPECT_EQ(Text(5, Artist), expected.m_strArtist);
    EXPECT_EQ(Text(6, Artist), QStringLiteral("old")) << "another file";

    Edit(2, Album, QString(40, u'x'));
    EXPECT_EQ(Text(2, Album), QString(30, u'x')) << "what a reading gives";
    Edit(2, Title, QStringLiteral("new"));
    Edit(2, Title, QString());
    EXPECT_EQ(Text(2, Title), QStringLiteral("song"));
    EXPECT_EQ(m_collection[0]->m_strTitle, QStringLiteral("song"));
    Edit(2, Year, QStringLiteral("2001"));
    EXPECT_EQ(Tags().m_strYear, QStringLiteral("2001"));
}

TEST_F(TrackEditTest, RebuildStoresAnOpenEditForItsTrack) {
    AddTrack(m_collection, QStringLiteral("/c/another.mp3"));
    m_collection[2]->m_strArtist = QStringLiteral("before");
    Type(2, Artist, QStringLiteral("new"));
    ASSERT_TRUE(m_collection.SortBy(0x2, 1)); // gives the track another row
    m_view.FillGrid();
    EXPECT_FALSE(m_grid.IsEditing());
    AwaitWriter();
    EXPECT_EQ(Tags().m_strArtist, QStringLiteral("new"));
    const char* const artists[] = {"before", "new", "old"};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(m_collection[i]->m_strArtist, QString::fromLatin1(artists[i]));
        EXPECT_EQ(Text(2 + i, Artist), QString::fromLatin1(artists[i]));
    }
}

TEST_F(TrackEditTest, FailedEditBringsTheOldTextBack) {
    // A file with two names is not rewritten, whoever the user is.
    std::filesystem::create_hard_link(m_path.toStdString(),
                                      m_scratch.File(QStringLiteral("other.mp3")).toStdString());
    const QByteArray before = ReadFile(m_path);
    Edit(2, Artist, QStringLiteral("new"));
    EXPECT_EQ(Text(2, Artist), QStringLiteral("old"));
    EXPECT_EQ(m_collection[0]->m_strArtist, QStringLiteral("old"));
    EXPECT_EQ(ReadFile(m_path), before);
    std::filesystem::remove(m_path.toStdString());
    Edit(2, Artist, QStringLiteral("new"));
    EXPECT_EQ(Text(2, Artist), QStringLiteral("old")) << "the file is gone";
    EXPECT_FALSE(std::filesystem::exists(m_path.toStdString()));
}
