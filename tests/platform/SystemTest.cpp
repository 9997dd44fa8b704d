#include "platform/Files.h"
#include "platform/NamedLock.h"
#include "platform/Path.h"
#include "platform/ScratchFolder.h"
#include "tests/fixtures/Environment.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

TEST(NamedLockTest, OneHolderAtATimeAndNoneAfterAKill) {
    const QString name = QStringLiteral("a title / with: anything, of process %1").arg(::getpid());
    {
        const CNamedLock first(name);
        EXPECT_TRUE(first.IsHeld() && CNamedLock(name + u'2').IsHeld());
        EXPECT_FALSE(CNamedLock(name).IsHeld());
    }
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        const CNamedLock lock(name);
        static_cast<void>(::write(ready[1], lock.IsHeld() ? "y" : "n", 1));
        ::pause();
    }
    ::close(ready[1]);
    char held = 0;
    ASSERT_EQ(::read(ready[0], &held, 1), 1);
    EXPECT_EQ(held, 'y');
    EXPECT_FALSE(CNamedLock(name).IsHeld());
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(CNamedLock(name).IsHeld());
}

TEST(ScratchFolderTest, IsMadeEmptyAndPrivateAndFollowsNoLink) {
    const ScratchFolder temporary;
    const ScopedVariable variable("TMPDIR", temporary.Path());
    const QString name = "VTD";
    const QByteArray folder = Path::ToBytes(temporary.File(name));
    const QString outside = temporary.Write("outside/file", "x");
    temporary.Write("VTD/old/file", "x");
    temporary.MakeLink("VTD/link", "../outside");

    EXPECT_EQ(MakeScratchFolder(name), temporary.File(name));
    EXPECT_TRUE(ListFolder(temporary.File(name))->empty());
    struct stat status {};
    ASSERT_EQ(::stat(folder, &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);

    ASSERT_EQ(::rmdir(folder), 0);
    temporary.MakeLink("VTD", "outside");
    EXPECT_EQ(MakeScratchFolder(name), temporary.File(name + QString::number(::getuid())));
    EXPECT_EQ(ReadFile(outside), "x");

    const ScopedVariable missing("TMPDIR", temporary.File("missing"));
    EXPECT_TRUE(MakeScratchFolder(name).isEmpty());
}
