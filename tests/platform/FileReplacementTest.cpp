#include "platform/FileReplacement.h"

#include "platform/Path.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>

namespace {

/// Replaces the file by "new " and its old content.
bool Replace(const QString& path) {
    std::optional<FileReplacement> replacement = FileReplacement::Begin(path);
    return replacement && replacement->Append("new ") &&
           replacement->AppendOriginal(0, replacement->OriginalSize()) &&
           replacement->MatchesOriginal(4, 0, replacement->OriginalSize()) && replacement->Commit();
}

struct stat StatusOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(::lstat(Path::ToBytes(path).constData(), &status), 0);
    return status;
}

std::size_t FilesIn(const QString& folder) {
    return ListFolder(folder)->size();
}

} // namespace

TEST(FileReplacementTest, KeepsModeAndAttributes) {
    const ScratchFolder scratch;
    const QString path = scratch.Write(Path::FromBytes("odd \xE9.mp3"), QByteArray(300'000, 'x'));
    const QByteArray bytes = Path::ToBytes(path);
    ASSERT_EQ(::chmod(bytes, 0751), 0);
    // Not every file system takes attributes.
    const bool attributed = ::setxattr(bytes, "user.trackdeck", "value", 5, 0) == 0;
    ASSERT_TRUE(attributed || errno == ENOTSUP);

    EXPECT_TRUE(Replace(path));
    EXPECT_EQ(ReadFile(path), "new " + QByteArray(300'000, 'x'));
    EXPECT_EQ(StatusOf(path).st_mode & 07777, 0751U);
    std::array<char, 5> value{};
    EXPECT_EQ(::getxattr(bytes, "user.trackdeck", value.data(), value.size()), attributed ? 5 : -1);
    EXPECT_EQ(FilesIn(scratch.Path()), 1U);
}

TEST(FileReplacementTest, FollowsALink) {
    const ScratchFolder scratch;
    const QString target = scratch.Write(QStringLiteral("far/target.mp3"), "old");
    const QString link = scratch.File(QStringLiteral("link.mp3"));
    ASSERT_EQ(::symlink("far/target.mp3", Path::ToBytes(link)), 0);
    EXPECT_TRUE(Replace(link));
    EXPECT_TRUE(S_ISLNK(StatusOf(link).st_mode));
    EXPECT_EQ(ReadFile(target), "new old");
    EXPECT_EQ(FilesIn(scratch.File(QStringLiteral("far"))), 1U);
}

TEST(FileReplacementTest, RefusesWhatItCouldNotKeepWhole) {
    const ScratchFolder scratch;
    const QString twice = scratch.Write(QStringLiteral("twice"), "old");
    ASSERT_EQ(::link(Path::ToBytes(twice), Path::ToBytes(scratch.File(QStringLiteral("name")))), 0);
    const QString pipe = scratch.File(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(Path::ToBytes(pipe), 0600), 0);
    for (const QString& path : {twice, pipe, scratch.Path(), scratch.File(QStringLiteral("none"))})
        EXPECT_FALSE(FileReplacement::Begin(path)) << path.toStdString();
    EXPECT_EQ(ReadFile(twice), "old");
    EXPECT_EQ(FilesIn(scratch.Path()), 3U);
}

TEST(FileReplacementTest, LeavesTheOldFileUntilTheCommit) {
    const ScratchFolder scratch;
    const QString path = scratch.Write(QStringLiteral("file"), "old");
    {
        std::optional<FileReplacement> dropped = FileReplacement::Begin(path);
        ASSERT_TRUE(dropped && dropped->Append("new"));
        EXPECT_EQ(ReadFile(path), "old");
        EXPECT_EQ(ReadFile(dropped->NewPath()), "new");
        EXPECT_FALSE(dropped->MatchesOriginal(0, 0, 3));
    }
    EXPECT_EQ(FilesIn(scratch.Path()), 1U);

    std::optional<FileReplacement> late = FileReplacement::Begin(path);
    ASSERT_TRUE(late && late->Append("new"));
    WriteFile(path, "changed by another");
    EXPECT_FALSE(late->Commit());
    EXPECT_EQ(ReadFile(path), "changed by another");
}

TEST(FileReplacementTest, TakesAFileThatALibraryHasEditedByName) {
    const ScratchFolder scratch;
    const QString path = scratch.Write(QStringLiteral("file"), "old");
    std::optional<FileReplacement> replacement = FileReplacement::Begin(path);
    ASSERT_TRUE(replacement && replacement->AppendOriginal(0, 3));
    ASSERT_EQ(::unlink(Path::ToBytes(replacement->NewPath())), 0); // as id3lib does
    WriteFile(replacement->NewPath(), "edited");
    EXPECT_TRUE(replacement->Commit());
    EXPECT_EQ(ReadFile(path), "edited");
}

TEST(FileReplacementTest, NoticesAChangeOfTheSameSize) {
    const ScratchFolder scratch;
    const QString path = scratch.Write(QStringLiteral("file"), "old");
    const QByteArray bytes = Path::ToBytes(path);
    const std::array<timespec, 2> past = {{{1'000'000, 0}, {1'000'000, 0}}};
    ASSERT_EQ(::utimensat(AT_FDCWD, bytes, past.data(), 0), 0);
    const struct stat before = StatusOf(path);

    std::optional<FileReplacement> replacement = FileReplacement::Begin(path);
    ASSERT_TRUE(replacement && replacement->Append("new"));
    struct stat after = before;
    do { // until the clock of the file system, which is coarse, has moved on
        WriteFile(path, "odd");
        ASSERT_EQ(::utimensat(AT_FDCWD, bytes, past.data(), 0), 0); // as a copying program does
        after = StatusOf(path);
    } while (after.st_ctim.tv_sec == before.st_ctim.tv_sec &&
             after.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
    EXPECT_FALSE(replacement->Commit());
    EXPECT_EQ(ReadFile(path), "odd");
}

TEST(FileReplacementTest, CreatesAFileThatIsNotThere) {
    const ScratchFolder scratch;
    const QString path = scratch.File(QStringLiteral("file"));
    {
        std::optional<FileReplacement> late = FileReplacement::BeginOrCreate(path);
        ASSERT_TRUE(late && late->Append("new"));
        WriteFile(path, "of another");
        EXPECT_FALSE(late->Commit());
    }
    EXPECT_EQ(ReadFile(path), "of another");
    const auto mode = StatusOf(path).st_mode; // that of any new file
    ASSERT_EQ(::unlink(Path::ToBytes(path)), 0);

    std::optional<FileReplacement> creation = FileReplacement::BeginOrCreate(path);
    ASSERT_TRUE(creation && creation->Append("new") && creation->Commit());
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(StatusOf(path).st_mode, mode);
    EXPECT_EQ(FilesIn(scratch.Path()), 1U);

    const QString nowhere = scratch.File(QStringLiteral("nowhere"));
    ASSERT_EQ(::symlink("missing/file", Path::ToBytes(nowhere)), 0);
    EXPECT_FALSE(FileReplacement::BeginOrCreate(nowhere));
    EXPECT_FALSE(FileReplacement::BeginOrCreate(scratch.File(QStringLiteral("no/folder"))));
}
