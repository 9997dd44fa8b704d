// Claim: the program's window is up nearly as soon as any window of its toolkit can be.
//
// Starts, in turn, the program and a bare window with a table and a menu, each as a process of its
// own, and takes the time from the start of the process to its first painted window. The collection
// holds some files, as a user's does.

#include "app/TrackDeckApp.h"
#include "bench/Clock.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QTableWidget>
#include <QTimer>
#include <QWidget>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int kRounds = 15;
constexpr int kFiles = 200;

/// Ends the process when a window has been painted and what it painted has been sent out.
class FirstPaint : public QObject {
public:
    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* widget = qobject_cast<QWidget*>(object);
        if (event->type() == QEvent::Paint && widget && widget->isWindow() &&
            widget->windowType() != Qt::SplashScreen)
            QTimer::singleShot(0, [] { std::_Exit(0); });
        return false;
    }
};

void WatchFirstPaint() {
    if (std::getenv("BENCH_CHILD"))
        qApp->installEventFilter(new FirstPaint);
}
Q_COREAPP_STARTUP_FUNCTION(WatchFirstPaint)

int RunBareWindow(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare"));
    window.menuBar()->addMenu(QStringLiteral("File"))->addAction(QStringLiteral("Exit"));
    window.setCentralWidget(new QTableWidget(20, 9));
    window.resize(768, 576);
    window.show();
    return QApplication::exec();
}

double MeasureStart(char* program, const char* kind) {
    ::setenv("BENCH_CHILD", kind, 1);
    return MeasureMs([&] {
        pid_t child = 0;
        char* arguments[] = {program, nullptr};
        int status = 1;
        if (::posix_spawn(&child, "/proc/self/exe", nullptr, nullptr, arguments, environ) != 0 ||
            ::waitpid(child, &status, 0) != child || status != 0) {
            std::fprintf(stderr, "a window did not come up\n");
            std::exit(1);
        }
    });
}

/// A home of its own for the program, with some files in the collection.
void MakeHome() {
    const std::string home = BENCH_FOLDER "/start-home";
    std::filesystem::remove_all(home);
    std::filesystem::create_directories(home + "/tmp");
    const std::string collection = home + "/Music/Veltria Track Deck";
    std::filesystem::create_directories(collection);
    for (int i = 0; i < kFiles; ++i)
        std::ofstream(collection + "/" + std::to_string(i) + ".mp3") << "x";
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("TMPDIR", (home + "/tmp").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (home + "/config").c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", (home + "/tmp").c_str(), 0);
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
        ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
}

} // namespace

int main(int argc, char** argv) {
    if (const char* kind = std::getenv("BENCH_CHILD"))
        return std::string(kind) == "bare" ? RunBareWindow(argc, argv)
                                           : CTrackDeckApp().Run(argc, argv);
    MakeHome();
    std::vector<double> program;
    std::vector<double> bare;
    MeasureStart(argv[0], "program"); // warms the caches, and makes it no first run
    MeasureStart(argv[0], "bare");
    for (int round = 0; round < kRounds; ++round) {
        program.push_back(MeasureStart(argv[0], "program"));
        bare.push_back(MeasureStart(argv[0], "bare"));
    }
    std::printf("start ms=%.0f ratio_to_bare=%.2f\n", Median(program),
                Median(program) / Median(bare));
    return 0;
}
