#include "library/CommandState.h"

#include "library/BodyMenu.h"
#include "tests/library/LibraryFixture.h"

#include <set>

using namespace Command;

namespace {

/// A list of two tracks and two playlists, of which as many are checked.
void Fill(CMediaList& list, int tracks, int playlists) {
    list.ClearAll();
    for (const auto& [name, checked] : {std::pair("a.mp3", tracks > 0),
                                        {"b.mp3", tracks > 1},
                                        {"a.M3U", playlists > 0},
                                        {"b.M3U", playlists > 1}})
        AddTrack(list, QLatin1String(name)).m_bChecked = checked;
}

struct CommandStateTest : LibraryFixture {
    /// Those of the list's commands that can be given: new playlist, delete, convert, copy button,
    /// to the phone, to the collection.
    [[nodiscard]] std::string Enabled() const {
        std::string enabled;
        for (const auto& [letter, command] : {std::pair('n', kCreatePlaylist),
                                              {'d', kDelete},
                                              {'c', kConvert},
                                              {'b', kCopy},
                                              {'p', kCopyToPhone},
                                              {'o', kCopyToCollection}})
            if (m_enabled.at(command))
                enabled += letter;
        return enabled;
    }
};

} // namespace

TEST_F(CommandStateTest, FollowsTheListAndItsChecks) {
    const struct {
        int type;
        int sourceType;
        int view;          ///< the item that is marked; 0: as before
        const char* alone; ///< each without a check, with two tracks, one of both, two playlists
        const char* withPhone;
    } rows[] = {{MEDIA_TYPE_COLLECTION, -1, kViewCollection, "|ndc|d|d", "|ndcbp|dbp|dbp"},
                {MEDIA_TYPE_ALL, -1, kViewAllMusic, "|bo|bo|bo", "|bpo|bpo|bpo"},
                {MEDIA_TYPE_CD, -1, kFirstCd + 3, "|bo|bo|bo", "|bpo|bpo|bpo"},
                {MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_COLLECTION, 0, "|||", "|||"},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_COLLECTION, 0, "|||", "|||"},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_ALL, 0, "|||", "|||"},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_PHONE, 0, "|nbo|bo|bo", "|nbo|bo|bo"},
                {MEDIA_TYPE_PHONE, -1, kViewPhone, "|nbo|bo|bo", "|nbo|bo|bo"}};
    const auto check = [&](const auto& row, const char* expected) {
        g_bPlaylistOnly = row.type == MEDIA_TYPE_PLAYLIST;
        g_bSelectionOnly = row.type == MEDIA_TYPE_SELECTION;
        CMediaList& list = IsExclusiveView() ? *m_lists.GetActiveList() : m_collection;
        list.m_iType = row.type;
        list.m_iMenuId = kFirstCd + 3;
        const bool isFromPhone = row.type == MEDIA_TYPE_PHONE || row.sourceType == MEDIA_TYPE_PHONE;
        std::string enabled;
        for (const auto& [tracks, playlists] : {std::pair(0, 0), {2, 0}, {1, 1}, {0, 2}}) {
            Fill(list, tracks, playlists);
            list.m_iSourceType = row.sourceType;
            m_marked = 0;
            m_state.UpdateCommands();
            enabled += (tracks + playlists ? "|" : "") + Enabled();
            EXPECT_EQ(m_marked, row.view) << row.type;
            EXPECT_EQ(m_isToPhone, m_lists.HasPhoneList() && !isFromPhone) << row.type;
        }
        EXPECT_EQ(enabled, expected) << row.type << ' ' << row.sourceType;
    };
    for (const auto& row : rows)
        check(row, row.alone);
    m_collection.m_iType = -1;
    m_lists.Add("Phone", MEDIA_TYPE_PHONE, 1);
    for (const auto& row : rows) // the phone's own list is the first one
        check(row, row.withPhone);
}

TEST_F(CommandStateTest, WithoutActiveListNothingChanges) {
    Fill(m_collection, 2, 0);
    m_state.UpdateCommands();
    const auto before = m_state.GetUiState();
    m_collection.m_bActive = 0;
    m_collection.ClearAll();
    m_state.UpdateCommands();
    EXPECT_EQ(m_state.GetUiState(), before);

    m_player.commands = {.canPlay = true, .canNext = true, .playMode = 3};
    const auto operation = m_status.BeginOperation({}, {});
    m_state.UpdateCommands();
    EXPECT_EQ(m_state.GetUiState() ^ before, 0x2000u | 0x4000 | 0x80 | 0x200000 | 0x400000);
}

TEST_F(CommandStateTest, WordShowsWhole) {
    EXPECT_EQ(m_state.GetUiState(), 0x2u | 0x200 | 0x400 | 0x2000 | 0x8000 | 0x200000 | 0x2000000);
    m_state.ApplyUiState(0);
    std::set<int> on;
    for (const auto& [command, enabled] : m_enabled)
        if (enabled)
            on.insert(command);
    EXPECT_EQ(on, (std::set<int>{kScan, kSelectAll, kDeselectAll, kPrevious, kNext}));
    EXPECT_EQ(m_enabled.size(), 17u) << "the four that wait for nothing among them";
    EXPECT_EQ(m_marked, kViewCollection) << "the last mark";

    for (const auto& [mode, command] :
         {std::pair(0x100000u, 32791), {0x200000, 32792}, {0x300000, 32793}, {0x400000, 33134}}) {
        m_state.SetField(UiState::kPlayModeMask, mode);
        EXPECT_EQ(m_marked, command);
        EXPECT_EQ(m_state.GetUiState() & 0xF00000, mode);
    }
    m_state.SetField(UiState::kViewMask, UiState::kViewCd + 5);
    EXPECT_EQ(m_state.GetUiState() & 0xF01FFFF, 0x5000000u | 0x2 | 0x200 | 0x400 | 0x2000 | 0x8000);
    m_marked = 0;
    m_state.ApplyUiState(0);
    EXPECT_EQ(m_marked, kFirstCd + 5);
}

TEST(BodyMenuTest, HasWhatItsListAllows) {
    // edit, play, delete, cancel, add to playlist, genre, rename, select all, deselect all:
    // enabled '+', gray '-', gone ' '. One track is checked.
    const struct {
        int type;
        int sourceType;
        const char* track;
        const char* playlist;
        bool opens;
    } rows[] = {{MEDIA_TYPE_COLLECTION, -1, "+++-++ ++", "+++-+-+++", true},
                {MEDIA_TYPE_PHONE, -1, "+-+-+-+++", "+-+-+-+++", true},
                {MEDIA_TYPE_ALL, -1, " + --- ++", " + --- ++", false},
                {MEDIA_TYPE_CD, -1, "++ --+ ++", "++ --+ ++", false},
                {MEDIA_TYPE_PLAYLIST, MEDIA_TYPE_COLLECTION, "+++-+- ++", "+++-+- ++", false},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_COLLECTION, "+++-++ ++", "+++-+-+++", true},
                {MEDIA_TYPE_SELECTION, MEDIA_TYPE_ALL, " + --- ++", " + --- ++", false}};
    const auto signs = [](const BodyMenu& menu) {
        std::string text;
        for (const int command : {kBodyEdit, kBodyPlay, kBodyDelete, kBodyCancel, kFirstPlaylist,
                                  kFirstGenre, kBodyRename, kBodySelectAll, kBodyDeselectAll})
            text += " -+"[static_cast<int>(menu.items.at(command))];
        return text;
    };
    for (const auto& row : rows) {
        CMediaList list(QString(), row.type, 1);
        Fill(list, 1, 0);
        list.m_iSourceType = row.sourceType;
        EXPECT_EQ(signs(MakeBodyMenu(list, 0)), row.track) << row.type << ' ' << row.sourceType;
        EXPECT_EQ(signs(MakeBodyMenu(list, 3)), row.playlist) << row.type;
        EXPECT_FALSE(MakeBodyMenu(list, 0).opens);
        EXPECT_EQ(MakeBodyMenu(list, 3).opens, row.opens);
    }

    // Tracks can be added to a playlist, but not a playlist, and not to none.
    CMediaList list(QString(), MEDIA_TYPE_COLLECTION, 1);
    const auto canAdd = [&] { return MakeBodyMenu(list, 0).items.at(kFirstPlaylist); };
    for (const auto& [tracks, playlists] : {std::pair(0, 0), {2, 1}, {2, 0}}) {
        Fill(list, tracks, playlists);
        EXPECT_EQ(canAdd() == ItemState::Enabled, tracks > 0 && playlists == 0);
    }
    list.RemoveIf([](const CTrackRecord& record) { return record.m_strPath.endsWith(u'U'); });
    EXPECT_EQ(canAdd(), ItemState::Gray);
    EXPECT_EQ(MakeBodyMenu(list, 0).items.at(kBodySelectAll), ItemState::Gone) << "all are";
}

TEST(CommandMapTest, FindsRanges) {
    CCommandMap map;
    std::vector<int> run;
    map.On(100, 102, [&run](int command) { run.push_back(command); });
    map.On(5, [](int) { throw std::runtime_error("no harm"); });
    for (const int command : {99, 100, 102, 103, 5, 4})
        map.Run(command);
    EXPECT_EQ(run, (std::vector<int>{100, 102}));
    EXPECT_TRUE(map.Has(5) && map.Has(101) && !map.Has(6) && !map.Has(103) && !map.Has(-1));
}
