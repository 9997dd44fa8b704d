// Claim: a disk that takes 30 ms for each file, and stalls, holds up no work in the window.
//
// Takes the main dialog through a scan at start with a stall in its midst, an edit of a title, the
// artwork of a track, an opened playlist, and its end while a scan stalls. Prints for each the
// longest time without a turn of the event loop, for comparison that of a window at rest, and how
// many files the interface thread has opened.

#include "app/ArtworkField.h"
#include "app/TrackDeckDlg.h"
#include "base/Language.h"
#include "bench/Clock.h"
#include "bench/SlowDisk.h"
#include "grid/GridCtrl.h"
#include "platform/Path.h"
#include "skin/SkinPalette.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QEventLoop>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kTracks = 300;
constexpr int kTracksOfAlbum = 100;
constexpr int kTracksOfPlaylist = 100;
constexpr int kRowsAtFirst = 3; // the header, and the titles of two lists
constexpr int kTitleColumn = 1;
constexpr auto kPatience = std::chrono::seconds(60);

double MsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// A home of its own for the program, whose collection lies on the slow disk.
void MakeHome() {
    namespace fs = std::filesystem;
    const fs::path home = BENCH_FOLDER "/slow-home";
    fs::remove_all(home);
    fs::create_directories(home / "tmp");
    fs::permissions(home / "tmp", fs::perms::owner_all);
    const fs::path collection = home / "Music/Veltria Track Deck";
    std::string playlist;
    for (int i = 0; i < kTracks; ++i) {
        const fs::path album = "Album " + std::to_string(i / kTracksOfAlbum);
        const fs::path track = album / (std::to_string(i) + ".mp3");
        fs::create_directories(collection / album);
        fs::copy_file(MEDIA_FOLDER "/lame-v23-v1-picture.mp3", collection / track);
        if (i < kTracksOfPlaylist)
            playlist += track.string() + "\r\n";
    }
    std::ofstream(collection / "list.m3u") << playlist;
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("TMPDIR", (home / "tmp").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", (home / "tmp").c_str(), 0);
    ::setenv("TRACKDECK_SLOW_FOLDER", (home / "Music").c_str(), 1);
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
        ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
}

[[noreturn]] void Fail(const char* what) {
    std::fflush(stdout);
    std::fprintf(stderr, "\nwaited in vain for %s\n", what);
    std::_Exit(1);
}

/// Of a file, 0 if there is none. Another one once it was replaced.
ino_t FileNumber(const QString& path) {
    struct stat status {};
    return ::stat(Path::ToBytes(path).constData(), &status) == 0 ? status.st_ino : 0;
}

/// The user, and how long the event loop stands still meanwhile.
class User : public QObject {
public:
    explicit User(CTrackDeckDlg& dialog)
        : m_dialog(dialog)
        , m_grid(*dialog.findChild<CGridCtrl*>())
        , m_list(*dialog.GetLists().FindListByType(MEDIA_TYPE_COLLECTION)) {
        for (QWidget* child : dialog.findChildren<QWidget*>())
            if (auto* field = dynamic_cast<CArtworkField*>(child))
                m_pArtwork = field;
        connect(&m_heart, &QTimer::timeout, this, [this] { Beat(); });
        m_heart.setTimerType(Qt::PreciseTimer);
        m_grid.viewport()->installEventFilter(this);
    }

    void Act() {
        Scans();
        Rest(1000);
        EndPhase("idle");
        EditsATitle();
        ClicksATrack();
        OpensAPlaylist();
        Closes();
    }

    Clock::time_point m_closed; ///< when it was told to

private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Paint)
            return false;
        if (!m_heart.isActive()) {
            m_lastBeat = Clock::now();
            m_heart.start(1);
        }
        if (m_firstRowsMs < 0 && m_grid.GetRowCount() > kRowsAtFirst)
            m_firstRowsMs = MsSince(m_shown);
        return false;
    }

    void Beat() {
        m_longestGap = std::max(m_longestGap, MsSince(m_lastBeat));
        m_lastBeat = Clock::now();
        if (m_pLoop && (m_done() || m_lastBeat > m_end))
            m_pLoop->quit();
    }

    void WaitFor(const char* what, std::function<bool()> done) {
        QEventLoop loop;
        m_pLoop = &loop;
        m_done = std::move(done);
        m_end = Clock::now() + kPatience;
        loop.exec();
        m_pLoop = nullptr;
        if (!m_done())
            Fail(what);
    }

    void Rest(int ms) {
        WaitFor("rest", [ms, start = Clock::now()] { return MsSince(start) > ms; });
    }

    /// Lets the window settle, and prints the longest gap since the phase before.
    void EndPhase(const char* name) {
        Rest(200);
        std::printf(" %s_gap_ms=%.0f", name, m_longestGap);
        m_longestGap = 0;
    }

    [[nodiscard]] QPoint PlaceOf(int row) const {
        return m_grid.GetCellRect({row, kTitleColumn}).center();
    }

    void ChooseFromMenu(int row, const char* item) {
        m_grid.EnsureVisible(row, kTitleColumn);
        const QPoint place = PlaceOf(row);
        QWidget* viewport = m_grid.viewport();
        QTest::mouseClick(viewport, Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        const auto popup = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
        WaitFor("a menu", popup);
        for (QAction* action : popup()->actions())
            if (action->text().remove(u'&') == QLatin1String(item)) {
                popup()->close();
                action->trigger();
                return;
            }
        Fail(item);
    }

    void Scans() {
        SlowDisk::StallAt(kTracks / 2);
        m_shown = Clock::now();
        m_dialog.show();
        m_dialog.activateWindow();
        WaitFor("the end of the scan", [this] {
            return m_firstRowsMs >= 0 && m_grid.GetRowCount() == kRowsAtFirst + kTracks + 1;
        });
        std::printf("slow first_rows_ms=%.0f scan_ms=%.0f", m_firstRowsMs, MsSince(m_shown));
        EndPhase("scan");
    }

    void EditsATitle() {
        const int row = RowOf(".mp3");
        const QString path = m_list[row - 2]->m_strPath;
        m_grid.SetFocusCell({row, kTitleColumn});
        m_grid.setFocus();
        QTest::keyClick(&m_grid, Qt::Key_F2);
        QWidget* edit = m_grid.focusWidget();
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, QStringLiteral("Another title"));
        const auto before = FileNumber(path);
        QTest::keyClick(edit, Qt::Key_Return);
        WaitFor("the title in the file", [&] { return FileNumber(path) != before; });
        EndPhase("edit");
    }

    void ClicksATrack() {
        m_pArtwork->SetPicture({});
        const int row = RowOf(".mp3") + 1;
        m_grid.EnsureVisible(row, kTitleColumn);
        QTest::mouseClick(m_grid.viewport(), Qt::LeftButton, {}, PlaceOf(row));
        WaitFor("the artwork", [this] { return !m_pArtwork->GetPicture().isNull(); });
        EndPhase("artwork");
    }

    void OpensAPlaylist() {
        ChooseFromMenu(RowOf(".m3u"), "Open");
        WaitFor("the playlist", [this] { return m_grid.GetRowCount() == 1 + kTracksOfPlaylist; });
        EndPhase("playlist");
        QTest::keyClick(&m_dialog, Qt::Key_W, Qt::ControlModifier);
        WaitFor("the collection", [this] { return m_grid.GetRowCount() > kTracks; });
    }

    void Closes() {
        SlowDisk::StallAt(5);
        ChooseFromMenu(1, "Refresh");
        WaitFor("a stall", [] { return SlowDisk::CountStalls() == 2; });
        m_closed = Clock::now();
        m_dialog.close();
    }

    /// The row of the first record whose path ends so.
    [[nodiscard]] int RowOf(const char* ending) const {
        int index = 0;
        while (!m_list[index]->m_strPath.endsWith(QLatin1String(ending)))
            ++index;
        return 2 + index;
    }

    CTrackDeckDlg& m_dialog;
    CGridCtrl& m_grid;
    const CMediaList& m_list;
    CArtworkField* m_pArtwork = nullptr;
    Clock::time_point m_shown;
    double m_firstRowsMs = -1;

    // Of what is waited for
    QEventLoop* m_pLoop = nullptr;
    std::function<bool()> m_done;
    Clock::time_point m_end;

    double m_longestGap = 0; ///< ms
    Clock::time_point m_lastBeat;
    QTimer m_heart; ///< beats from the first painting on
};

} // namespace

int main(int argc, char** argv) {
    if (!std::getenv("TRACKDECK_SLOW_FOLDER")) { // which the disk reads once
        MakeHome();
        ::execv("/proc/self/exe", argv);
    }
    QApplication application(argc, argv);
    const QString folder = QCoreApplication::applicationDirPath();
    SetLanguageFile(folder + QStringLiteral("/languages/language.lgg"));
    SetThemeFile(folder + QStringLiteral("/skin/blackstyle/theme.ini"));
    UseSkinPalette();
    std::optional<CTrackDeckDlg> dialog(std::in_place, QString());
    User user(*dialog);
    QTimer::singleShot(0, &user, [&user] { user.Act(); });
    QApplication::exec();
    const double loopMs = MsSince(user.m_closed);
    dialog.reset();
    std::printf(" close_ms=%.0f end_ms=%.0f opened_by_interface_thread=%d\n", loopMs,
                MsSince(user.m_closed), SlowDisk::OpenedByMainThread());
    std::fflush(stdout);
    std::_Exit(0); // as the program does, whose threads may still read
}
