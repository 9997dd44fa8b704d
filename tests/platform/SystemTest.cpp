#include "platform/Files.h"
#include "platform/NamedLock.h"
#include "platform/Path.h"
#include "platform/ScratchFolder.h"
#include "tests/fixtures/Environment.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

mode_t ModeOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(::stat(Path::ToBytes(path), &status), 0);
    return status.st_mode & 07777;
}

} // namespace

TEST(NamedLockTest, OneHolderAtATimeAndNoneAfterAKill) {
    const QString name = QStringLiteral("a title / with: anything, of process %1").arg(::getpid());
    {
        const NamedLock first(name);
        EXPECT_TRUE(first.IsHeld());
        EXPECT_FALSE(NamedLock(name).IsHeld());
        EXPECT_TRUE(NamedLock(name + u'2').IsHeld());
    }
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const NamedLock lock(name);
        static_cast<void>(::write(ready[1], lock.IsHeld() ? "y" : "n", 1));
        ::pause();
    }
    char held = 0;
    ASSERT_EQ(::read(ready[0], &held, 1), 1);
    EXPECT_EQ(held, 'y');
    EXPECT_FALSE(NamedLock(name).IsHeld());
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(NamedLock(name).IsHeld());
}

TEST(ScratchFolderTest, IsMadeEmptyAndPrivate) {
    const ScratchFolder temporary;
    const ScopedVariable variable("TMPDIR", temporary.Path());
    const QString name = QStringLiteral("VTD");
    const QString outside = temporary.Write(QStringLiteral("outside/file"), "x");
    temporary.Write(QStringLiteral("VTD/old/file"), "x");
    ASSERT_EQ(::symlink(Path::ToBytes(temporary.File(QStringLiteral("outside"))),
                        Path::ToBytes(temporary.File(QStringLiteral("VTD/link")))),
              0);

    EXPECT_EQ(MakeScratchFolder(name), temporary.File(name));
    EXPECT_TRUE(ListFolder(temporary.File(name))->empty());
    EXPECT_EQ(ModeOf(temporary.File(name)), 0700u);
    EXPECT_EQ(ReadFile(outside), "x") << "a link in the folder is removed, not followed";
}

TEST(ScratchFolderTest, LeavesALinkOfThatNameAlone) {
    const ScratchFolder temporary;
    const ScopedVariable variable("TMPDIR", temporary.Path());
    const QString outside = temporary.Write(QStringLiteral("outside/file"), "x");
    ASSERT_EQ(::symlink(Path::ToBytes(temporary.File(QStringLiteral("outside"))),
                        Path::ToBytes(temporary.File(QStringLiteral("VTD")))),
              0);

    const QString numbered = QStringLiteral("VTD%1").arg(::getuid());
    EXPECT_EQ(MakeScratchFolder(QStringLiteral("VTD")), temporary.File(numbered));
    EXPECT_EQ(ReadFile(outside), "x");

    const ScopedVariable missing("TMPDIR", temporary.File(QStringLiteral("missing")));
    EXPECT_TRUE(MakeScratchFolder(QStringLiteral("VTD")).isEmpty());
}
