#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"
#include "tests/fixtures/Printers.h"
#include "tests/tags/TagBytes.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

namespace {

// How a child process tells the result of its work; a sanitizer that misses a call ends it with 1.
constexpr int kDone = 10;
constexpr int kFailed = 11;
constexpr int kDenied = 12; ///< the system does not let the test set its stage

/// Runs `work` in a child process; the parent goes on with its number.
pid_t Fork(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() == 0 ? kDone : kFailed);
    return child;
}

int WaitFor(pid_t child) {
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
}

enum class Fault {
    Kill,   ///< the process dies as it enters the call
    Refuse, ///< the call is not made, and fails with "not implemented"
};

/// Runs `work` and lets `fault` happen at its system call number `call`, from 1 on. Returns the
/// status that waitpid gives, or nothing if there were fewer calls.
std::optional<int> RunWithFault(const std::function<int()>& work, int call, Fault fault) {
    const pid_t child = Fork([&work] {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(kDenied);
        ::raise(SIGSTOP);
        return work();
    });
    int status = WaitFor(child);
    EXPECT_TRUE(WIFSTOPPED(status)) << "a process may not trace its child here";
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD);
    constexpr int kSystemCall = SIGTRAP | 0x80;
    for (int stop = 0; WIFSTOPPED(status) && stop < 2 * call; ++stop) {
        const bool entersTheCall = stop == 2 * call - 2;
        const bool refused = entersTheCall && fault == Fault::Refuse;
        ::ptrace(refused ? PTRACE_SYSEMU : PTRACE_SYSCALL, child, nullptr, nullptr);
        status = WaitFor(child);
        if (!entersTheCall || !WIFSTOPPED(status))
            continue;
        if (WSTOPSIG(status) != kSystemCall)
            break;
        if (fault == Fault::Kill)
            ::kill(child, SIGKILL);
        ::ptrace(PTRACE_CONT, child, nullptr, nullptr);
        status = WaitFor(child);
        while (WIFSTOPPED(status)) { // the process may abort for want of the call
            ::ptrace(PTRACE_CONT, child, nullptr, WSTOPSIG(status));
            status = WaitFor(child);
        }
        return status;
    }
    if (WIFSTOPPED(status)) {
        ::kill(child, SIGKILL);
        WaitFor(child);
    }
    return std::nullopt;
}

/// Lets this process alone see an empty disk of `size` bytes at `path`; false where processes may
/// have no mounts of their own.
bool MountDisk(const QString& path, qsizetype size) {
    const std::string user = "0 " + std::to_string(::getuid()) + " 1";
    const std::string group = "0 " + std::to_string(::getgid()) + " 1";
    const std::string options = "size=" + std::to_string(size);
    const auto write = [](const char* file, const std::string& text) {
        return WriteAll(FileDescriptor(::open(file, O_WRONLY | O_CLOEXEC)).Get(), text);
    };
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write("/proc/self/setgroups", "deny") &&
           write("/proc/self/uid_map", user) && write("/proc/self/gid_map", group) &&
           ::mount("none", Path::ToBytes(path), "tmpfs", 0, options.c_str()) == 0;
}

class InterruptedWriteTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_old = ReadFile(MediaFile(QStringLiteral("mutagen-v23.mp3")));
        m_strPath = m_scratch.Write(QStringLiteral("song.mp3"), m_old);
        m_info.m_strTitle = QStringLiteral("New title");
        const QString other = m_scratch.Write(QStringLiteral("other/song.mp3"), m_old);
        ASSERT_EQ(WriteTrackTags(other, m_info, 0), 0);
        m_new = ReadFile(other);
    }

    [[nodiscard]] std::function<int()> Write() const {
        return [path = m_strPath, info = m_info] { return WriteTrackTags(path, info, 0); };
    }

    /// Writes once for each system call, with the fault there, and hands the call's number, the
    /// status and the content that was left to `check`.
    template <typename Check>
    void WriteWithFaults(Fault fault, Check check) const {
        for (int call = 1;; ++call) {
            const auto entries = ListFolder(m_scratch.Path());
            for (const FolderEntry& entry : *entries) {
                if (entry.kind == FileKind::Regular) // a killed write may have left its new one
                    ::unlink(Path::ToBytes(m_scratch.File(entry.name)));
            }
            WriteFile(m_strPath, m_old);
            const std::optional<int> status = RunWithFault(Write(), call, fault);
            if (!status) {
                EXPECT_EQ(ReadFile(m_strPath), m_new) << "the last run was not disturbed";
                EXPECT_GT(call, 30);
                return;
            }
            SCOPED_TRACE(call);
            check(*status, ReadFile(m_strPath));
        }
    }

    const ScratchFolder m_scratch;
    QString m_strPath;
    CTrackInfo m_info;
    QByteArray m_old;
    QByteArray m_new;
};

} // namespace

TEST_F(InterruptedWriteTest, AKillAtAnyCallLeavesTheOldOrTheNewFile) {
    bool sawNew = false;
    WriteWithFaults(Fault::Kill, [&](int, const QByteArray& content) {
        EXPECT_TRUE(content == m_old || content == m_new);
        sawNew = sawNew || content == m_new;
    });
    EXPECT_TRUE(sawNew) << "the last calls come after the rename";
}

TEST_F(InterruptedWriteTest, AnyCallThatFailsLeavesTheOldOrTheNewFile) {
    WriteWithFaults(Fault::Refuse, [&](int status, const QByteArray& content) {
        const bool done = WIFEXITED(status) && WEXITSTATUS(status) == kDone;
        const bool failed = WIFEXITED(status) && WEXITSTATUS(status) == kFailed;
        EXPECT_TRUE(content == m_new ? !failed : content == m_old && !done);
        if (failed) {
            EXPECT_EQ(ListFolder(m_scratch.Path())->size(), 2U) << "a file is left";
        }
    });
}

TEST_F(InterruptedWriteTest, AFullDiskLeavesTheOldFileAlone) {
    const QString disk = m_scratch.MakeFolder(QStringLiteral("disk"));
    for (const qsizetype room : {qsizetype{8192}, m_new.size() / 2, m_new.size() - 8192}) {
        const int status = WaitFor(Fork([this, &disk, room] {
            if (!MountDisk(disk, m_old.size() + room))
                ::_exit(kDenied); // the limits below alone stand for the full disk
            const QString path = Path::Join(disk, QStringLiteral("song.mp3"));
            WriteFile(path, m_old);
            const bool refused = WriteTrackTags(path, m_info, 0) != 0;
            return refused && ReadFile(path) == m_old && ListFolder(disk)->size() == 1 ? 0 : 1;
        }));
        const int result = WIFEXITED(status) ? WEXITSTATUS(status) : kFailed;
        EXPECT_TRUE(result == kDone || result == kDenied) << room;
    }
    for (const rlim_t room : {0L, 1L, 100L, 70'000L, static_cast<long>(m_new.size()) - 1}) {
        const int status = WaitFor(Fork([write = Write(), room] {
            // A file that may not grow on is the full disk of one process.
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit limits{room, room};
            return ::setrlimit(RLIMIT_FSIZE, &limits) == 0 ? write() : 0;
        }));
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == kFailed) << room;
        EXPECT_EQ(ReadFile(m_strPath), m_old);
        EXPECT_EQ(ListFolder(m_scratch.Path())->size(), 3U) << "nothing is left beside it";
    }
}
