#include "tests/fixtures/Environment.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"

#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace {

constexpr int kPatience = 30'000; // ms
constexpr const char* kFolders[] = {"home", "tmp", "runtime", "program"};

/// True while a thread of the program walks folders.
bool IsScanning(const QProcess& program) {
    return HasThread(program.processId(), "folder scan");
}

/// A home for programs that a test starts. Their title, and with it the name that makes them the
/// only instance, is the test's own.
struct Home {
    Home() {
        for (const char* folder : kFolders)
            scratch.MakeFolder(folder);
        std::filesystem::permissions(File("runtime").toStdString(),
                                     std::filesystem::perms::owner_all);
        std::filesystem::copy_file(PROGRAM, File("program/trackdeck").toStdString());
        scratch.Write("program/languages/language.lgg",
                      "[TrackDeck]\nIDS_MAIN_TITLE=" + scratch.Path().toUtf8() + "\n");
        for (int i = 0; i < 3000; ++i)
            scratch.Write(QStringLiteral("home/Music/Veltria Track Deck/%1.mp3").arg(i), "x");
    }

    [[nodiscard]] QString File(const char* name) const { return scratch.File(name); }

    [[nodiscard]] std::unique_ptr<QProcess> Start() const {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedChannels);
        process->start(File("program/trackdeck"), {});
        EXPECT_TRUE(process->waitForStarted());
        return process;
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
                 std::filesystem::recursive_directory_iterator(File(folder).toStdString()))
                names.insert(entry.path());
        return names;
    }

    const ScratchFolder scratch;
    const ScopedVariable variables[5] = {
        {"HOME", File("home")},
        {"TMPDIR", File("tmp")},
        {"XDG_RUNTIME_DIR", File("runtime")},
        {"XDG_CONFIG_HOME", File("home/.config")},
        {"XDG_CACHE_HOME", File("cache")}}; // what the font library keeps is not the program's
};

} // namespace

TEST(ProgramTest, KilledInMidScanItLeavesNoTraceAndIsInNobodysWay) {
    const Home home;
    std::set<std::string> expected = home.Listing();
    expected.insert(home.File("tmp/VTD_CDMA").toStdString());
    int killedInScan = 0;
    for (const unsigned long delay : {0, 20, 60, 120}) {
        const auto program = home.StartScan();
        QThread::msleep(delay);
        killedInScan += IsScanning(*program);
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
    first->kill();
    EXPECT_TRUE(first->waitForFinished(kPatience));
}
