#include "platform/Path.h"
#include "tests/fixtures/Printers.h"
#include "tests/fixtures/ScratchFolder.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <set>

namespace {

constexpr int kPatience = 30'000; // ms

/// A home for programs that a test starts. Their title, and with it the name that makes them the
/// only instance, is the test's own.
class Home {
public:
    Home() {
        for (const char* folder : {"home", "tmp", "runtime", "program/languages"})
            m_scratch.MakeFolder(QString::fromLatin1(folder));
        std::filesystem::permissions(File("runtime").toStdString(),
                                     std::filesystem::perms::owner_all);
        std::filesystem::copy_file(PROGRAM, Program().toStdString());
        WriteFile(File("program/languages/language.lgg"),
                  "[TrackDeck]\nIDS_MAIN_TITLE=" + m_scratch.Path().toUtf8() + "\n");
    }

    [[nodiscard]] QString File(const char* name) const {
        return m_scratch.File(QString::fromLatin1(name));
    }
    [[nodiscard]] QString Program() const { return File("program/trackdeck"); }

    [[nodiscard]] std::unique_ptr<QProcess> Start() const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), File("home"));
        environment.insert(QStringLiteral("TMPDIR"), File("tmp"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), File("runtime"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), File("home/.config"));
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), File("cache"));
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::ForwardedChannels);
        process->start(Program(), QStringList());
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    void AddMusic(int files) const {
        const QString folder =
            m_scratch.MakeFolder(QStringLiteral("home/Music/Veltria Track Deck"));
        for (int i = 0; i < files; ++i)
            WriteFile(folder + QStringLiteral("/%1.mp3").arg(i), "x");
    }

    /// Everything below the folders that the program may write to.
    [[nodiscard]] std::set<std::string> Listing() const {
        std::set<std::string> names;
        for (const char* folder : {"home", "tmp", "runtime", "program"})
            for (const auto& entry :
                 std::filesystem::recursive_directory_iterator(File(folder).toStdString()))
                names.insert(entry.path().lexically_relative(m_scratch.Path().toStdString()));
        return names;
    }

    /// Waits until the program has made its scratch folder, which it does on its way to the scan.
    void AwaitScratchFolder() const {
        QElapsedTimer waited;
        waited.start();
        while (!std::filesystem::exists(File("tmp/VTD_CDMA").toStdString()) &&
               waited.elapsed() < kPatience)
            QThread::msleep(1);
    }

private:
    ScratchFolder m_scratch;
};

} // namespace

TEST(ProgramTest, SecondInstanceEndsAtOnce) {
    const Home home;
    const auto first = home.Start();
    home.AwaitScratchFolder();
    const auto second = home.Start();
    ASSERT_TRUE(second->waitForFinished(kPatience));
    EXPECT_EQ(second->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_EQ(first->state(), QProcess::Running);
    first->kill();
    ASSERT_TRUE(first->waitForFinished(kPatience));

    const auto next = home.Start();
    EXPECT_FALSE(next->waitForFinished(500)) << "a killed instance is in nobody's way";
    next->kill();
    next->waitForFinished(kPatience);
}

TEST(ProgramTest, KillInMidScanLeavesTheScratchFolderAlone) {
    const Home home;
    home.AddMusic(3000);
    std::set<std::string> expected = home.Listing();
    expected.insert("tmp/VTD_CDMA");
    for (const unsigned long delay : {0, 20, 60, 120}) {
        const auto program = home.Start();
        home.AwaitScratchFolder();
        QThread::msleep(delay);
        program->kill();
        ASSERT_TRUE(program->waitForFinished(kPatience));
        EXPECT_EQ(home.Listing(), expected);
    }
}
