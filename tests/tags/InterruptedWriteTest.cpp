#include "tests/fixtures/InterruptedWrite.h"

#include "platform/Files.h"
#include "platform/Path.h"
#include "tags/TrackTags.h"
#include "tests/tags/TagBytes.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

namespace {

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

    [[nodiscard]] std::function<bool()> Write() const {
        return [path = m_strPath, info = m_info] { return WriteTrackTags(path, info, 0) == 0; };
    }

    const ScratchFolder m_scratch;
    QString m_strPath;
    CTrackInfo m_info;
    QByteArray m_old;
    QByteArray m_new;
};

} // namespace

TEST_F(InterruptedWriteTest, AKillAtAnyCallLeavesTheOldOrTheNewFile) {
    ExpectOldOrNewFile(m_strPath, Write(), Fault::Kill);
}

TEST_F(InterruptedWriteTest, AnyCallThatFailsLeavesTheOldOrTheNewFile) {
    ExpectOldOrNewFile(m_strPath, Write(), Fault::Refuse);
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
            return refused && ReadFile(path) == m_old && ListFolder(disk)->size() == 1;
        }));
        const int result = WIFEXITED(status) ? WEXITSTATUS(status) : kFailed;
        EXPECT_TRUE(result == kDone || result == kDenied) << room;
    }
    for (const rlim_t room : {0L, 1L, 100L, 70'000L, static_cast<long>(m_new.size()) - 1}) {
        const int status = WaitFor(Fork([write = Write(), room] {
            // A file that may not grow on is the full disk of one process.
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit limits{room, room};
            return ::setrlimit(RLIMIT_FSIZE, &limits) != 0 || write();
        }));
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == kFailed) << room;
        EXPECT_EQ(ReadFile(m_strPath), m_old);
        EXPECT_EQ(ListFolder(m_scratch.Path())->size(), 3U) << "nothing is left beside it";
    }
}
