#include "bench/GridChecks.h"

#include "base/IPrompts.h"
#include "base/IStatusDisplay.h"
#include "bench/Clock.h"
#include "grid/GridCtrl.h"
#include "library/CommandMap.h"
#include "library/CommandState.h"
#include "library/Commands.h"
#include "library/ITrackPlayer.h"
#include "library/LibraryScanner.h"
#include "library/MediaLists.h"
#include "library/ViewCommands.h"
#include "platform/Worker.h"
#include "view/TrackView.h"

#include <QApplication>
#include <QPaintEvent>
#include <QTableWidget>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int kRowsInWindow = 60;
constexpr int kRounds = 50;

/// What the commands ask of a program, which has nothing to play and nothing to say here.
struct NoProgram : ITrackPlayer, IPrompts, IStatusDisplay, ICommandDisplay {
    void ReleaseFile(const QString&) override {}
    void ReleaseList(const CMediaList&) override {}
    void RenewQueue() override {}
    [[nodiscard]] PlayerCommands GetCommands() const override { return {}; }
    [[nodiscard]] bool Confirm(const QString&) override { return false; }
    void Warn(const QString&) override {}
    [[nodiscard]] Answer Ask(const Question&) override { return {}; }
    void ShowLasting(Lasting, const QString&) override {}
    void ShowNews(const QString&) override {}
    [[nodiscard]] std::unique_ptr<IRunningOperation>
    BeginOperation(const QString&, std::function<void()>) override {
        return nullptr;
    }
    [[nodiscard]] bool IsBusy() const override { return false; }
    void CancelOperations() override {}
    void EnableCommand(int, bool) override {}
    void MarkCommand(int) override {}
    void ShowCopyDirection(bool) override {}
};

/// Adds up what is painted of a widget.
class PaintedArea : public QObject {
public:
    /// Square pixels since the last call.
    double Take() { return std::exchange(m_area, 0); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            for (const QRect& rect : static_cast<const QPaintEvent*>(event)->region())
                m_area += rect.width() * rect.height();
        }
        return false;
    }

private:
    double m_area = 0;
};

/// The lists in their view, as the main dialog puts them together.
class CollectionWindow {
public:
    explicit CollectionWindow(const std::vector<Track>& tracks) {
        m_grid.SetNotifyHandler([this](GridNotification& notification) {
            m_view.OnNotify(notification);
            m_state.UpdateCommands();
        });
        for (const Track& texts : tracks)
            AddTrack(texts);
        m_collection.m_bActive = 1;
        m_view.FillGrid();
        m_grid.resize(1200, m_grid.GetRowHeight(0) + kRowsInWindow * RowHeight());
        m_grid.show();
        m_grid.viewport()->installEventFilter(&m_painted);
        QApplication::processEvents();
    }
    CollectionWindow(const CollectionWindow&) = delete;
    CollectionWindow& operator=(const CollectionWindow&) = delete;

    void Run(int command) {
        m_commands.Run(command);
        QApplication::processEvents();
    }

    void SelectAllRows() {
        m_grid.SetSelectedRange(m_collection[0]->m_iRow, 0, m_grid.GetRowCount() - 1,
                                m_grid.GetColumnCount() - 1);
        QApplication::processEvents();
    }

    void PressSpace() {
        m_view.OnKey(Qt::Key_Space, {});
        m_state.UpdateCommands();
        QApplication::processEvents();
    }

    void ClickCheck(int index) {
        const QPoint box = m_grid.GetCellRect({m_collection[index]->m_iRow, 0}).center();
        QTest::mousePress(m_grid.viewport(), Qt::LeftButton, {}, box);
        QApplication::processEvents();
        QTest::mouseRelease(m_grid.viewport(), Qt::LeftButton, {}, box);
        QApplication::processEvents();
    }

    void AddTrack(const Track& texts) {
        auto track = std::make_unique<CTrackRecord>();
        track->m_strTitle = texts[kTitle];
        track->m_strArtist = texts[kArtist];
        track->m_strAlbum = texts[kAlbum];
        track->m_strSize = texts[kSize];
        track->m_strPath = QStringLiteral("/home/user/Music/%1/%2.mp3")
                               .arg(texts[kAlbum])
                               .arg(m_collection.GetCount());
        m_collection.Append(std::move(track));
    }

    /// As on the header of the titles.
    void ClickHeader() {
        m_collection.m_bActive = 1;
        m_view.SortColumn(kTitle);
    }

    void Fold() {
        GridNotification title{.code = NM_DBLCLK, .row = 1, .col = 1};
        m_view.OnNotify(title);
    }

    void DeleteTrack(int index) {
        const CTrackRecord* track = m_collection[index];
        m_view.OnTracksRemoved(
            m_collection,
            m_collection.RemoveIf([track](const CTrackRecord& one) { return &one == track; }));
    }

    void Append(const std::vector<Track>& tracks, int count) {
        const int first = m_collection.GetCount();
        for (int i = 0; i < count; ++i)
            AddTrack(tracks[(first + i) % kTracks]);
        m_view.OnTracksAppended(m_collection, first);
    }

    void SetStatus(int index) {
        m_view.SetTrackStatus(m_collection[index]->m_strPath, QStringLiteral("Copying"));
    }

    [[nodiscard]] int CountTracks() const { return m_collection.GetCount(); }

    /// Since the last call, in rows of the window's width.
    double TakePaintedRows() {
        return m_painted.Take() / (m_grid.viewport()->width() * RowHeight());
    }

private:
    [[nodiscard]] int RowHeight() const { return m_grid.GetRowHeight(m_collection[0]->m_iRow); }

    NoProgram m_program;
    CMediaLists m_lists;
    CMediaList& m_collection =
        m_lists.Add(QStringLiteral("My Collection"), MEDIA_TYPE_COLLECTION, 1);
    PaintedArea m_painted;
    CGridCtrl m_grid;
    CTrackView m_view{m_lists, m_grid};
    CCommandState m_state{m_lists, m_program, m_program, m_program};
    CCommandMap m_commands;
    CLibraryScanner m_scanner{m_lists};
    CWorker m_writer{"writer"};
    CViewCommands m_viewCommands{
        {m_lists, m_view, m_state, m_program, m_program, m_program, m_scanner, m_writer},
        m_commands};
};

struct Times {
    double processor;
    double wall;
};

/// Medians of a call; `prepare` comes before each.
Times Measure(const std::function<void()>& prepare, const std::function<void()>& call) {
    std::vector<double> processor;
    std::vector<double> wall;
    for (int round = 0; round < kRounds; ++round) {
        prepare();
        wall.push_back(MeasureMs([&] { processor.push_back(ProcessorMs(call)); }));
    }
    return {Median(processor), Median(wall)};
}

/// Checks as many rows of a QTableWidget, which is painted then.
Times MeasureTable() {
    QTableWidget table(kTracks, 1);
    for (int row = 0; row < kTracks; ++row)
        table.setItem(row, 0, new QTableWidgetItem); // the table's
    table.resize(1200, 1200);
    table.show();
    const auto check = [&table](Qt::CheckState state) {
        for (int row = 0; row < kTracks; ++row)
            table.item(row, 0)->setCheckState(state);
        QApplication::processEvents();
    };
    return Measure([&] { check(Qt::Unchecked); }, [&] { check(Qt::Checked); });
}

} // namespace

void MeasureChecks(const std::vector<Track>& tracks) {
    CollectionWindow window(tracks);
    const auto check = [&] { window.Run(Command::kSelectAll); };
    const auto uncheck = [&] { window.Run(Command::kDeselectAll); };
    const Times checked = Measure(uncheck, check);
    const Times unchecked = Measure(check, uncheck);

    window.SelectAllRows();
    const Times space = Measure([] {}, [&] { window.PressSpace(); });

    int row = 0;
    window.ClickCheck(row); // the other rows are selected no longer
    double painted = 0;     // by the worst click, in rows
    const auto toOtherRow = [&] { row = (row + 7) % (kRowsInWindow - 1); };
    const auto click = [&] {
        window.TakePaintedRows();
        window.ClickCheck(row);
        painted = std::max(painted, window.TakePaintedRows());
    };
    const Times otherRow = Measure(toOtherRow, click);
    const double otherPainted = std::exchange(painted, 0);
    const Times sameRow = Measure([] {}, click);
    const Times table = MeasureTable();
    std::printf("check click_ms=%.2f painted_rows=%.2f other_row_ms=%.2f "
                "other_row_painted_rows=%.2f\n",
                sameRow.processor, painted, otherRow.processor, otherPainted);
    std::printf("checks rows=%d select_all_ms=%.1f select_all_wall_ms=%.1f "
                "deselect_all_ms=%.1f space_ms=%.1f space_wall_ms=%.1f table_ms=%.1f "
                "ratio_to_qtablewidget=%.3f\n",
                kTracks, checked.processor, checked.wall, unchecked.processor, space.processor,
                space.wall, table.processor, checked.processor / table.processor);
}

void MeasureRows(const std::vector<Track>& tracks) {
    CollectionWindow window(tracks);
    const auto paint = [] { QApplication::processEvents(); };
    const Times sort = Measure(paint, [&] { window.ClickHeader(); });
    const auto toggle = [&] { window.Fold(); };
    const auto toggleBack = [&, round = 0]() mutable { // but for the first time
        if (round++ > 0)
            toggle();
        paint();
    };
    const Times fold = Measure(toggleBack, toggle);
    const Times unfold = Measure(toggleBack, toggle);
    const Times remove = Measure(paint, [&] { window.DeleteTrack(window.CountTracks() / 2); });
    const Times append = Measure(paint, [&] { window.Append(tracks, 100); });
    const Times status = Measure(paint, [&] { window.SetStatus(window.CountTracks() / 3); });
    std::printf("rows rows=%d header_click_ms=%.1f fold_ms=%.2f unfold_ms=%.2f delete_one_ms=%.2f "
                "append_100_ms=%.2f status_ms=%.3f\n",
                kTracks, sort.processor, fold.processor, unfold.processor, remove.processor,
                append.processor, status.processor);
}
