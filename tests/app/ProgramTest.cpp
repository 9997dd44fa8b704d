#include "tests/fixtures/Environment.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"

#include <QProcess>
#include <QThread>

#include <filesystem>
#include <set>

namespace {

constexpr int kPatience = 30'000; // ms
constexpr const char* kFolders[] = {"home", "tmp", "runtime", "program"};

/// A home for programs that a test starts. Their title, and with it the name that makes them the
/// only instance, is the test's own.
struct Home {
    Home() {
        for (const char* folder : kFolders)
            scratch.MakeFolder(folder);
        std::filesystem::permissions(scratch.File("runtime").toStdString(),
                                     std::filesystem::perms::owner_all);
        std::filesystem::copy_file(PROGRAM, scratch.File("program/trackdeck").toStdString());
        scratch.Write("program/languages/language.lgg",
                      "[TrackDeck]\nIDS_MAIN_TITLE=" + scratch.Path().toUtf8() + "\n");
        for (int i = 0; i < 3000; ++i)
            scratch.Write(QStringLiteral("home/Music/Veltria Track Deck/%1.mp3").arg(i), "x");
    }

    [[nodiscard]] std::unique_ptr<QProcess> Start() const {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedChannels);
        process->start(scratch.File("program/trackdeck"), {});
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }
    [[nodiscard]] static bool IsScanning(const QProcess& program) {
        return HasThread(program.processId(), "folder scan");
    }
    [[nodiscard]] std::unique_ptr<QProcess> StartScan() const {
        auto process = Start();
        EXPECT_TRUE(RunUntil([&] { return IsScanning(*process); }));
        return process;
    }

    /// Everything below the folders that the program may write to.
    [[nodiscard]] std::set<std::string> Listing() const {
        std::set<std::string> names;
        for (const char* folder : kFolders)
            for (const auto& entry :
                 std::filesystem::recursive_directory_iterator(scratch.File(folder).toStdString()))
                names.insert(entry.path());
        return names;
    }

    const ScratchFolder scratch;
    const ScopedVariable variables[5] = {
        {"HOME", scratch.File("home")},
        {"TMPDIR", scratch.File("tmp")},
        {"XDG_RUNTIME_DIR", scratch.File("runtime")},
        {"XDG_CONFIG_HOME", scratch.File("home/.config")},
        {"XDG_CACHE_HOME", scratch.File("cache")}}; // not listed: the font library's
};

} // namespace

TEST(ProgramTest, KilledInMidScanItLeavesNoTraceAndIsInNobodysWay) {
    const Home home;
    std::set<std::string> expected = home.Listing();
    expected.insert(home.scratch.File("tmp/VTD_CDMA").toStdString());
    int killedInScan = 0;
    for (const unsigned long delay : {0, 20, 60, 120}) {
        const auto program = home.StartScan();
        QThread::msleep(delay);
        killedInScan += Home::IsScanning(*program);
        program->kill();
        ASSERT_TRUE(program->waitForFinished(kPatience));
        EXPECT_EQ(home.Listing(), expected);
    }
    EXPECT_GE(killedInScan, 2) << "most scans were over before the kill";

    const auto first = home.StartScan();
    const auto second = home.Start();
    ASSERT_TRUE(second->waitForFinished(kPatience));
    EXPECT_EQ(second->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_FALSE(first->waitForFinished(0));
}
