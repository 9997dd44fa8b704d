#include "library/FolderScan.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/RunUntil.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fixtures/Threads.h"

#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <set>
#include <utility>

namespace {

constexpr int kPatience = 30'000; // ms
constexpr const char* kFolders[] = {"home", "tmp", "runtime", "program"};

/// True while a thread of the program walks folders.
bool IsScanning(const QProcess& program) {
    return HasThread(program.processId(), "folder scan");
}

/// A home for programs that a test starts. Their title, and with it the name that makes them the
/// only instance, is the test's own.
class Home {
public:
    Home() {
        for (const char* folder : kFolders)
            m_scratch.MakeFolder(QString::fromLatin1(folder));
        std::filesystem::permissions(File("runtime").toStdString(),
                                     std::filesystem::perms::owner_all);
        std::filesystem::copy_file(PROGRAM, File("program/trackdeck").toStdString());
        m_scratch.Write(QStringLiteral("program/languages/language.lgg"),
                        "[TrackDeck]\nIDS_MAIN_TITLE=" + m_scratch.Path().toUtf8() + "\n");
        for (int i = 0; i < 3000; ++i)
            m_scratch.Write(QStringLiteral("home/Music/Veltria Track Deck/%1.mp3").arg(i), "x");
    }

    [[nodiscard]] QString File(const char* name) const {
        return m_scratch.File(QString::fromLatin1(name));
    }

    [[nodiscard]] std::unique_ptr<QProcess> Start() const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const std::pair<const char*, const char*> folders[] = {
            {"HOME", "home"},
            {"TMPDIR", "tmp"},
            {"XDG_RUNTIME_DIR", "runtime"},
            {"XDG_CONFIG_HOME", "home/.config"},
            {"XDG_CACHE_HOME", "cache"}}; // what the font library keeps is not the program's
        for (const auto& [name, folder] : folders)
            environment.insert(QString::fromLatin1(name), File(folder));
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::ForwardedChannels);
        process->start(File("program/trackdeck"), QStringList());
        EXPECT_TRUE(process->waitForStarted());
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

private:
    ScratchFolder m_scratch;
};

} // namespace

TEST(ProgramTest, KilledInMidScanItLeavesNoTraceAndIsInNobodysWay) {
    const Home home;
    std::set<std::string> expected = home.Listing();
    expected.insert(home.File("tmp/VTD_CDMA").toStdString());
    int killedInScan = 0;
    for (const unsigned long delay : {0, 20, 60, 120}) {
        const auto program = home.Start();
        ASSERT_TRUE(RunUntil([&] { return IsScanning(*program); }));
        QThread::msleep(delay);
        killedInScan += IsScanning(*program);
        program->kill();
        ASSERT_TRUE(program->waitForFinished(kPatience));
        EXPECT_EQ(home.Listing(), expected);
    }
    EXPECT_GE(killedInScan, 2) << "most scans were over before the kill";

    const auto first = home.Start();
    ASSERT_TRUE(RunUntil([&] { return IsScanning(*first); }));
    const auto second = home.Start();
    ASSERT_TRUE(second->waitForFinished(kPatience));
    EXPECT_EQ(second->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_FALSE(first->waitForFinished(0));
    first->kill();
    EXPECT_TRUE(first->waitForFinished(kPatience));
}
