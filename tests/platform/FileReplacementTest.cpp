#include "platform/FileReplacement.h"

#include "platform/Path.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>

namespace {

struct stat StatusOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(::lstat(Path::ToBytes(path).constData(), &status), 0);
    return status;
}

struct FileReplacementTest : ::testing::Test {
    [[nodiscard]] std::size_t CountFiles() const { return ListFolder(m_scratch.Path())->size(); }

    const ScratchFolder m_scratch;
    const QString m_strPath = m_scratch.Write(Path::FromBytes("odd \xE9.mp3"), "old");
    const QByteArray m_bytes = Path::ToBytes(m_strPath);
};

} // namespace

TEST_F(FileReplacementTest, KeepsModeAttributesAndLinks) {
    const QByteArray content(300'000, 'x');
    WriteFile(m_strPath, content);
    ASSERT_EQ(::chmod(m_bytes, 0751), 0);
    // Not every file system takes attributes.
    const bool attributed = ::setxattr(m_bytes, "user.trackdeck", "value", 5, 0) == 0;
    m_scratch.MakeFolder("far");
    const QString link = m_scratch.MakeLink("far/link.mp3", "../odd \xE9.mp3");

    std::optional<CFileReplacement> replacement = CFileReplacement::Begin(link);
    ASSERT_TRUE(replacement);
    EXPECT_EQ(replacement->OriginalSize(), 300'000u);
    EXPECT_TRUE(replacement->Append("new ") && replacement->AppendOriginal(0, 300'000) &&
                replacement->MatchesOriginal(4, 0, 300'000) && replacement->Commit());
    EXPECT_TRUE(S_ISLNK(StatusOf(link).st_mode));
    EXPECT_EQ(ReadFile(m_strPath), "new " + content);
    EXPECT_EQ(StatusOf(m_strPath).st_mode & 07777, 0751U);
    EXPECT_EQ(::getxattr(m_bytes, "user.trackdeck", nullptr, 0), attributed ? 5 : -1);
    EXPECT_EQ(CountFiles(), 2U);
}

TEST_F(FileReplacementTest, RefusesWhatItCouldNotKeepWhole) {
    ASSERT_EQ(::link(m_bytes, Path::ToBytes(m_scratch.File("name"))), 0);
    const QString pipe = m_scratch.MakePipe("pipe");
    const QString nowhere = m_scratch.MakeLink("nowhere", "missing/file");
    EXPECT_FALSE(CFileReplacement::Begin(m_scratch.File("none")));
    for (const QString& path :
         {m_strPath, pipe, m_scratch.Path(), nowhere, m_scratch.File("no/folder")})
        EXPECT_FALSE(CFileReplacement::Begin(path) || CFileReplacement::BeginOrCreate(path))
            << path.toStdString();
    EXPECT_EQ(ReadFile(m_strPath), "old");
    EXPECT_EQ(CountFiles(), 4U);
}

TEST_F(FileReplacementTest, LeavesTheOldFileUntilTheCommit) {
    {
        std::optional<CFileReplacement> dropped = CFileReplacement::Begin(m_strPath);
        ASSERT_TRUE(dropped && dropped->Append("new"));
        EXPECT_EQ(ReadFile(m_strPath), "old");
        EXPECT_EQ(ReadFile(dropped->NewPath()), "new");
        EXPECT_FALSE(dropped->MatchesOriginal(0, 0, 3));
    }
    EXPECT_EQ(CountFiles(), 1U);

    std::optional<CFileReplacement> edited = CFileReplacement::Begin(m_strPath);
    ASSERT_TRUE(edited && edited->AppendOriginal(0, 3));
    ASSERT_EQ(::unlink(Path::ToBytes(edited->NewPath())), 0); // as a library that edits by name
    WriteFile(edited->NewPath(), "edited");
    EXPECT_TRUE(edited->Commit());
    EXPECT_EQ(ReadFile(m_strPath), "edited");
}

TEST_F(FileReplacementTest, NoticesAChangeByAnother) {
    const std::array<timespec, 2> past = {{{1'000'000, 0}, {1'000'000, 0}}};
    ASSERT_EQ(::utimensat(AT_FDCWD, m_bytes, past.data(), 0), 0);
    const struct stat before = StatusOf(m_strPath);
    std::optional<CFileReplacement> replacement = CFileReplacement::Begin(m_strPath);
    ASSERT_TRUE(replacement && replacement->Append("new"));
    struct stat after = before;
    do { // until the clock of the file system, which is coarse, has moved on
        WriteFile(m_strPath, "odd");                                  // of the same size
        ASSERT_EQ(::utimensat(AT_FDCWD, m_bytes, past.data(), 0), 0); // as a copying program does
        after = StatusOf(m_strPath);
    } while (after.st_ctim.tv_sec == before.st_ctim.tv_sec &&
             after.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
    EXPECT_FALSE(replacement->Commit());
    EXPECT_EQ(ReadFile(m_strPath), "odd");
}

TEST_F(FileReplacementTest, CreatesAFileThatIsNotThere) {
    const QString path = m_scratch.File("file");
    {
        std::optional<CFileReplacement> late = CFileReplacement::BeginOrCreate(path);
        ASSERT_TRUE(late && late->Append("new"));
        WriteFile(path, "of another");
        EXPECT_FALSE(late->Commit());
    }
    EXPECT_EQ(ReadFile(path), "of another");
    const auto mode = StatusOf(path).st_mode; // that of any new file
    ASSERT_EQ(::unlink(Path::ToBytes(path)), 0);

    std::optional<CFileReplacement> creation = CFileReplacement::BeginOrCreate(path);
    ASSERT_TRUE(creation && creation->Append("new") && creation->Commit());
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(StatusOf(path).st_mode, mode);
    EXPECT_EQ(CountFiles(), 2U);
}
