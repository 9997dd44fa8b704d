#include "tests/fixtures/InterruptedWrite.h"

#include "platform/Files.h"
#include "tags/TrackTags.h"
#include "tests/tags/TagBytes.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <functional>

namespace {

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
    for (const rlim_t room : {0L, 1L, 100L, 70'000L, static_cast<long>(m_new.size()) - 1}) {
        const int status = WaitFor(Fork([write = Write(), room] {
            // A file that may not grow on is the full disk of one process.
            ::signal(SIGXFSZ, SIG_IGN);
            const rlimit limits{room, room};
            return ::setrlimit(RLIMIT_FSIZE, &limits) != 0 || write();
        }));
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == kFailed) << room;
        EXPECT_EQ(ReadFile(m_strPath), m_old);
        EXPECT_EQ(ListFolder(m_scratch.Path())->size(), 2U) << "nothing is left beside it";
    }
}
