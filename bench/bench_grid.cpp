// Cost of the grid with 100,000 tracks by 9 columns: filling it and fitting the columns,
// painting a window of 60 rows, memory; and filling and fitting against a QTableWidget. Then, of
// as many tracks in the view of the lists, the checks, and rows that come, go and change places.
//
//   bench_grid
//   bench_grid --checks   the checks only
//   bench_grid --rows     the rows that come, go and change places, only
//   bench_grid --paint    the windows of the grid and of a QTableWidget only, at QT_SCALE_FACTOR
//
// Runs without a display, and starts itself to paint at 100 % and 200 %. Times are processor time
// of the whole process, that is of one core, so that other work on the machine does not count.

#include "bench/Clock.h"
#include "bench/Collection.h"
#include "bench/GridChecks.h"
#include "grid/GridCellBar.h"
#include "grid/GridCellCheck.h"
#include "grid/GridCellNull.h"
#include "grid/GridCtrl.h"

#include <QApplication>
#include <QHeaderView>
#include <QPixmap>
#include <QProcess>
#include <QScrollBar>
#include <QTableWidget>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

constexpr int kFirstTrack = 2; // below the header and the title of the list

int ResidentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:"))
            return std::stoi(line.substr(6)) / 1024;
    }
    return -1;
}

const QStringList& Headers() {
    static const QStringList headers =
        QStringLiteral(",Title,Artist,Album,Genre,Length,Size,BPM,Status").split(u',');
    return headers;
}

void Configure(CGridCtrl& grid) {
    QIcon note;
    for (const int side : {16, 32}) {
        QPixmap picture(side, side);
        picture.fill(QColor(0, 128, 128, 160));
        note.addPixmap(picture);
    }
    grid.SetImageList({note, note, note, note, note});
    grid.SetGridBkColor(0xF6F6F6);
    for (const bool row : {false, true}) {
        for (const bool col : {false, true})
            grid.GetDefaultCell(row, col)->SetCoords(8, 2);
    }
    grid.GetDefaultCell(false, false)->SetBackClr(0xE0FFFF);
    grid.GetDefaultCell(false, false)->SetSelBackClr(0xDFBE7A);
    grid.SetFixedColumnSelection(false);
    grid.SetGridLines(GridLines::HeaderMarks);
    grid.SetListMode(true);
}

void FillTitles(CGridCtrl& grid) {
    GridItem item;
    item.mask = GridMask::Text | GridMask::BackClr | GridMask::TextClr;
    item.backClr = 0xF6F6F6;
    item.textClr = 0;
    item.row = 0;
    for (item.col = 0; item.col < kColumns; ++item.col) {
        item.text = Headers()[item.col];
        grid.SetItem(item);
    }
    item.row = 1;
    item.backClr = 0xE4E4E4;
    item.text.clear();
    for (item.col = 0; item.col < kColumns; ++item.col) {
        const bool last = item.col == kColumns - 1;
        grid.SetCellType(1, item.col,
                         last ? RuntimeClass<CGridCellBar> : RuntimeClass<CGridCellNull>);
        if (last)
            item.text = QStringLiteral("My Collection (0/100000)");
        grid.SetItem(item);
        grid.SetItemState(1, item.col, GridState::ReadOnly);
    }
}

void Fill(CGridCtrl& grid, const std::vector<Track>& tracks) {
    grid.DeleteAllItems();
    grid.SetRowCount(kFirstTrack + kTracks);
    grid.SetColumnCount(kColumns);
    grid.SetFixedRowCount(1);
    grid.SetColumnWidth(0, 1);
    for (int col = 1; col < kColumns; ++col)
        grid.SetColumnWidth(col, 100);
    FillTitles(grid);

    GridItem item;
    item.textClr = 0;
    for (int i = 0; i < kTracks; ++i) {
        item.row = kFirstTrack + i;
        item.backClr = i % 2 ? 0xF4F4F4 : 0xFFFFFF;
        grid.SetCellType(item.row, 0, RuntimeClass<CGridCellCheck>);
        static_cast<CGridCellCheck*>(grid.GetCell(item.row, 0))->SetCheck(i % 3 == 0);
        for (item.col = 0; item.col < kColumns; ++item.col) {
            item.mask = GridMask::Text | GridMask::BackClr | GridMask::TextClr |
                        (item.col == kTitle ? GridMask::Image : 0);
            item.image = 4;
            item.text = tracks[i][item.col];
            grid.SetItem(item);
        }
    }
    grid.AutoSizeColumns();
}

void FillTable(QTableWidget& table, const std::vector<Track>& tracks) {
    table.setRowCount(0);
    table.setRowCount(kTracks);
    table.setColumnCount(kColumns);
    table.setHorizontalHeaderLabels(Headers());
    for (int row = 0; row < kTracks; ++row) {
        for (int col = 0; col < kColumns; ++col)
            table.setItem(row, col, new QTableWidgetItem(tracks[row][col])); // the table's
    }
    table.horizontalHeader()->setResizeContentsPrecision(-1);
    table.resizeColumnsToContents();
}

/// A window of as many rows, at 60 places between the first and the last row.
double MeasurePaint(QAbstractScrollArea& area, int height) {
    area.resize(1200, height);
    area.show();
    QApplication::processEvents();
    std::vector<double> paints;
    for (int round = 0; round < 60; ++round) {
        area.verticalScrollBar()->setValue(area.verticalScrollBar()->maximum() / 60 * round);
        QApplication::processEvents();
        paints.push_back(ProcessorMs([&] { area.viewport()->repaint(); }));
    }
    return Median(paints);
}

/// Prints what a window of 60 rows costs the grid, a QTableWidget with rows of the same height, and
/// the grid when it scrolls on by a row.
int RunPaint() {
    const std::vector<Track> tracks = MakeCollection();
    CGridCtrl grid;
    Configure(grid);
    Fill(grid, tracks);
    QTableWidget table;
    FillTable(table, tracks);
    const int row = grid.GetRowHeight(kFirstTrack);
    table.verticalHeader()->setMinimumSectionSize(1);
    table.verticalHeader()->setDefaultSectionSize(row);
    const int height = grid.GetRowHeight(0) + 60 * row;
    const double paint = MeasurePaint(grid, height);
    const double reference = MeasurePaint(table, height);
    const double line = ProcessorMs([&] {
        for (int i = 0; i < 60; ++i) {
            grid.verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
            QApplication::processEvents();
        }
    });
    std::printf("%.2f %.2f %.2f", paint, line / 60, reference);
    return 0;
}

/// The figures of RunPaint at a scale.
std::array<double, 3> PaintAt(const char* scale) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--paint")});
    process.waitForFinished(-1);
    std::array<double, 3> figures{};
    const QByteArrayList words = process.readAllStandardOutput().split(' ');
    for (qsizetype i = 0; i < words.size() && i < 3; ++i)
        figures[i] = words[i].toDouble();
    return figures;
}

int Run() {
    const std::vector<Track> tracks = MakeCollection();
    CGridCtrl grid;
    Configure(grid);
    std::vector<double> fills;
    for (int round = 0; round < 5; ++round)
        fills.push_back(ProcessorMs([&] { Fill(grid, tracks); }));
    const int resident = ResidentMegabytes();

    QTableWidget table;
    std::vector<double> tableFills;
    for (int round = 0; round < 3; ++round)
        tableFills.push_back(ProcessorMs([&] { FillTable(table, tracks); }));
    std::printf("qtablewidget fill_ms=%.0f\n", Median(tableFills));

    MeasureChecks(tracks);
    MeasureRows(tracks);

    const auto [paint, line, reference] = PaintAt("1");
    const auto [paint2, line2, reference2] = PaintAt("2");
    std::printf("paint rows=60 ms_at_100=%.2f ms_at_200=%.2f line_at_100=%.2f line_at_200=%.2f "
                "ratio_to_qtablewidget_at_100=%.3f ratio_to_qtablewidget_at_200=%.3f\n",
                paint, paint2, line, line2, paint / reference, paint2 / reference2);

    const double fill = Median(fills);
    std::printf("grid rows=%d fill_ms=%.0f paint_ms=%.2f rss_mb=%d "
                "ratio_to_qtablewidget=%.3f\n",
                kTracks, fill, paint, resident, fill / Median(tableFills));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.contains(QStringLiteral("--paint")))
        return RunPaint();
    if (arguments.contains(QStringLiteral("--checks")))
        MeasureChecks(MakeCollection());
    else if (arguments.contains(QStringLiteral("--rows")))
        MeasureRows(MakeCollection());
    else
        return Run();
    return 0;
}
