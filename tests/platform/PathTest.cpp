#include "platform/Path.h"

#include "platform/Files.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

TEST(PathTest, BytesSurviveTheWayThroughText) {
    const QByteArray names[] = {"",
                                "Gr\xC3\xBC.mp3",
                                "latin \xE9t\xE9.mp3",
                                "\xF0\x9F\x8E\xB5 note",
                                "cut \xF0\x9F\x8E",
                                "surrogate \xED\xB2\x80 in UTF-8",
                                "\xEF\xBB\xBFmark.mp3",
                                "a\xE9\xEF\xBB\xBFz"};
    for (const QByteArray& name : names) {
        const QString text = Path::FromBytes(name);
        EXPECT_EQ(Path::ToBytes(text), name);
        EXPECT_TRUE(Path::ForDisplay(text).isValidUtf16());
    }
    EXPECT_EQ(Path::ForDisplay(Path::FromBytes("a\xE9z")), QStringLiteral(u"a\uFFFDz"));
    EXPECT_NE(Path::FromBytes("\xE9"), Path::FromBytes("\xE8")) << "two files, two names";
}

TEST(PathTest, TakesPathsApart) {
    const QStringView rows[][5] = {
        // path, folder, name, name without extension, extension
        {u"/music/a.b/song.one.Mp3", u"/music/a.b", u"song.one.Mp3", u"song.one", u"Mp3"},
        {u"/music/a.b/song", u"/music/a.b", u"song", u"song", u""},
        {u"song.mp3", u"", u"song.mp3", u"song", u"mp3"},
        {u"/.mp3", u"", u".mp3", u"", u"mp3"},
        {u"/music/end.", u"/music", u"end.", u"end", u""}};
    for (const auto& [path, folder, name, base, extension] : rows) {
        EXPECT_EQ(Path::Folder(path.toString()), folder);
        EXPECT_EQ(Path::FileName(path.toString()), name);
        EXPECT_EQ(Path::BaseName(path.toString()), base);
        EXPECT_EQ(Path::Extension(path.toString()), extension);
    }
    EXPECT_EQ(Path::Join("/", "a"), "/a");
}

TEST(FilesTest, ListsEveryNameWithTheKindItLeadsTo) {
    const ScratchFolder scratch;
    const QString odd = Path::FromBytes("odd \xE9.mp3");
    scratch.Write(odd, "x");
    scratch.MakeFolder("folder");
    scratch.MakeLink("to folder", "folder");
    scratch.MakeLink("dangling", "nowhere");
    scratch.MakePipe("pipe");

    const auto entries = ListFolder(scratch.Path());
    ASSERT_TRUE(entries);
    EXPECT_EQ(entries->size(), 5U);
    for (const auto& [name, kind] : *entries)
        EXPECT_EQ(kind, name == odd                ? FileKind::Regular
                        : name.endsWith(u"folder") ? FileKind::Folder
                                                   : FileKind::Other)
            << name.toStdString();
    EXPECT_FALSE(ListFolder(scratch.File(odd)));
    for (const FolderEntry& entry : *entries)
        EXPECT_EQ(OpenForReading(scratch.File(entry.name)).IsOpen(), entry.name == odd);
    EXPECT_EQ(GetFileStatus(scratch.File("folder"))->identity,
              GetFileStatus(scratch.File("to folder"))->identity);
}
