#include "library/PlaylistFile.h"

#include "platform/Files.h"
#include "platform/Path.h"
#include "tests/fixtures/InterruptedWrite.h"
#include "tests/fixtures/LibraryFakes.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <unistd.h>

namespace {

struct PlaylistFileTest : ::testing::Test {
    [[nodiscard]] QStringList Read(const QByteArray& bytes, int allowDuplicates = 1) const {
        QStringList entries{"of another file"};
        EXPECT_EQ(ReadPlaylist(m_scratch.Write("read.m3u", bytes), entries, allowDuplicates), 1);
        return entries;
    }

    const ScratchFolder m_scratch;
    const QString m_strPath = m_scratch.File("list.m3u");
};

const QStringList kTracks{"/music/one.mp3", "/music/Öl & 水.mp3"};

} // namespace

TEST_F(PlaylistFileTest, ReadsEntries) {
    const QString piece(259, u'x');
    const QByteArray longest(259, 'x');
    const QString a = "a";
    const QString b = "b";
    const std::pair<QByteArray, QStringList> cases[] = {
        {"", {}},
        {"#EXTM3U\r\n#EXTINF:0, \r\na\r\n#EXTINF:0, \r\nb\r\n", {a, b}},
        {"a\r\n\r\nb\n\n", {a, {}, b, {}}},
        {"a\rb\r\r\nb\r", {"a\rb\r", "b\r"}},
        {"b\na\nb\n", {b, a, b}},
        {" #a\n", {" #a"}},
        {"\xEF\xBB\xBF#EXTM3U\na\n\xEF\xBB\xBF|", {a, QStringLiteral("\uFEFF|")}},
        {"\xC3\x96\n\xF0\x9F\x8E\xB5\n", {"Ö", "🎵"}},
        {"\xFF\n\xC3\n\xED\xB2\x80\n\xC0\xAF\na\n", {{}, {}, {}, {}, a}},
        {QByteArray("a\0hidden\r\n\0b\n#\0b\nb\0", 20), {a, {}, b}},
        {longest + "\r\na", {piece, a}},
        {longest + "a\r\n" + longest + longest + "\n", {piece, a, piece, piece}},
        {longest + "#a\n#" + longest + "\n", {piece, "x"}},
        {longest.chopped(1) + "\xC3\x96", {{}, {}}}};
    for (const auto& [bytes, entries] : cases)
        EXPECT_EQ(Read(bytes), entries) << bytes.toStdString();
    EXPECT_EQ(Read("b\n\na\nb\n\nA\n", 0), QStringList({b, {}, a, "A"}));
}

TEST_F(PlaylistFileTest, OpensRegularFilesOnly) {
    const QString pipe = m_scratch.MakePipe("pipe.m3u");
    const QString large = m_scratch.Write("large.m3u", "a\n");
    ASSERT_EQ(::truncate(Path::ToBytes(large), (16 << 20) + 1), 0);
    const QString endless = m_scratch.Write("many.m3u", QByteArray(250'001, '\n'));
    for (const QString& path : {m_strPath, pipe, m_scratch.Path(), large, endless}) {
        QStringList entries{"of another file"};
        EXPECT_EQ(ReadPlaylist(path, entries, 1), 0) << path.toStdString();
        EXPECT_TRUE(entries.isEmpty());
    }
    for (const QString& path : {pipe, m_scratch.Path()})
        EXPECT_FALSE(WritePlaylist(path, kTracks) || AppendToPlaylist(path, kTracks));
}

TEST_F(PlaylistFileTest, FindsTheFileOfAnEntry) {
    const QString folder = m_scratch.MakeFolder("lists");
    const QString playlist = Path::Join(folder, "list.m3u");
    const QString plain = m_scratch.Write("music/a.mp3", {});
    const QString odd = m_scratch.Write("lists/odd\\b.mp3", {});
    m_scratch.Write("lists/odd/b.mp3", {});
    m_scratch.MakeFolder("lists/odd\\folder");
    const auto backslashed = [](QString path) { return path.replace(u'/', u'\\'); };
    for (const auto& [entry, path] : {
             std::pair(plain, plain),
             {backslashed(plain), plain},
             {u'/' + backslashed(plain.sliced(1)), plain},
             {odd, odd},
             {"../music/a.mp3", plain},
             {".\\..\\music\\a.mp3", plain},
             {"odd\\b.mp3", odd},
             {"odd\\folder", folder + "/odd/folder"},
             {"none\\x: y.mp3", folder + "/none/x: y.mp3"},
             {"Ö.mp3", folder + "/Ö.mp3"},
         })
        EXPECT_EQ(ResolveEntry(playlist, entry), path) << entry.toStdString();
    for (const char* entry :
         {"/none\\a.mp3", "\\none\\a.mp3", "c:\\music\\a.mp3", "http://host/a\\b.mp3", ""})
        EXPECT_EQ(ResolveEntry(playlist, QLatin1String(entry)), QLatin1String(entry));
}

TEST_F(PlaylistFileTest, WritesTheTracksOfAListInOrder) {
    CMediaList list("Playlist", MEDIA_TYPE_PLAYLIST, 1);
    list.m_strPath = m_strPath;
    EXPECT_TRUE(list.SavePlaylist());
    EXPECT_EQ(ReadFile(m_strPath), "#EXTM3U\r\n");
    for (const QString& path : {kTracks[1], Path::FromBytes("/\xE9.m3u"), kTracks[1]})
        AddTrack(list, path);
    EXPECT_TRUE(list.SavePlaylist());
    EXPECT_EQ(ReadFile(m_strPath), "#EXTM3U\r\n"
                                   "#EXTINF:0, \r\n/music/\xC3\x96l & \xE6\xB0\xB4.mp3\r\n"
                                   "#EXTINF:0, \r\n/\xE9.m3u\r\n"
                                   "#EXTINF:0, \r\n/music/\xC3\x96l & \xE6\xB0\xB4.mp3\r\n");
    list.m_strPath = m_scratch.File("none/list.m3u");
    EXPECT_FALSE(list.SavePlaylist());
}

TEST_F(PlaylistFileTest, AppendsToTheEnd) {
    EXPECT_FALSE(AppendToPlaylist(m_strPath, kTracks));
    EXPECT_TRUE(ListFolder(m_scratch.Path())->empty());
    const QByteArray added = "/music/one.mp3\r\n/music/\xC3\x96l & \xE6\xB0\xB4.mp3\r\n";
    for (const auto& [before, after] : {std::pair<QByteArray, QByteArray>{"", added},
                                        {"#EXTM3U\r\n", "#EXTM3U\r\n" + added},
                                        {"\xFF\nb\n", "\xFF\nb\n" + added},
                                        {"b", "b\r\n" + added}}) {
        WriteFile(m_strPath, before);
        EXPECT_TRUE(AppendToPlaylist(m_strPath, kTracks));
        EXPECT_EQ(ReadFile(m_strPath), after);
    }
}

TEST_F(PlaylistFileTest, WritesNothingThatCouldNotBeReadAgain) {
    const QStringList cases[] = {QStringList(250'001, "/a"),
                                 QStringList(200'000, u'/' + QString(80, u'a')),
                                 {kTracks[0], "/music/two\nlines.mp3"}};
    WriteFile(m_strPath, "old");
    for (const QStringList& tracks : cases)
        EXPECT_FALSE(WritePlaylist(m_strPath, tracks)) << tracks[1].toStdString();
    EXPECT_FALSE(AppendToPlaylist(m_strPath, cases[1] + cases[0]));
    EXPECT_FALSE(AppendToPlaylist(m_strPath, cases[2]));
    EXPECT_EQ(ReadFile(m_strPath), "old");
    EXPECT_EQ(ListFolder(m_scratch.Path())->size(), 1U);
}

TEST_F(PlaylistFileTest, AnInterruptedWriteLeavesTheOldOrTheNewFile) {
    for (const auto& [write, isThere] :
         {std::pair(&WritePlaylist, true), {&WritePlaylist, false}, {&AppendToPlaylist, true}}) {
        for (const Fault fault : {Fault::Kill, Fault::Refuse}) {
            const ScratchFolder folder;
            const QString path = folder.File("list.m3u");
            if (isThere)
                WriteFile(path, "old");
            ExpectOldOrNewFile(
                path, [&, write = write] { return write(path, kTracks); }, fault);
        }
    }
}
