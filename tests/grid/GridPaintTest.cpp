#include "grid/GridCellBar.h"
#include "grid/GridCellNull.h"
#include "tests/grid/GridFixture.h"

#include <QImage>
#include <QScrollBar>

#include <cmath>
#include <set>

namespace {

constexpr COLORREF kPage = 0xF6F6F6;
constexpr COLORREF kSelected = 0xDFBE7A;

QImage Picture(CGridCtrl& grid) {
    return grid.viewport()->grab().toImage();
}

COLORREF At(const QImage& picture, QPoint point) {
    return ToColorRef(picture.pixelColor(point));
}

/// A grid without texts, so that a pixel of a cell is its background.
std::unique_ptr<CGridCtrl> MakeEmptyGrid(int rows, int cols) {
    auto grid = MakeGrid(rows, cols);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col) {
            grid->GetCell(row, col)->SetText(QString());
            grid->GetCell(row, col)->SetBackClr(row == 0 ? kPage : 0xFFFFFF);
        }
    }
    return grid;
}

void MakeSection(CGridCtrl& grid, int row, COLORREF colour) {
    const int last = grid.GetColumnCount() - 1;
    for (int col = 0; col < last; ++col)
        grid.SetCellType(row, col, RuntimeClass<CGridCellNull>);
    grid.SetCellType(row, last, RuntimeClass<CGridCellBar>);
    grid.GetCell(row, last)->SetBackClr(colour);
    grid.GetCell(row, last)->SetSelBackClr(colour);
}

void ExpectShade(const QImage& picture, const QRect& row, int x, QColor base) {
    for (int y = row.top(); y <= row.bottom(); ++y) {
        const double factor =
            std::sin(double(y - row.top()) / row.height() * 3.1415926 - 0.3) * 0.2 + 0.8;
        EXPECT_EQ(
            picture.pixelColor(x, y),
            QColor(int(base.red() * factor), int(base.green() * factor), int(base.blue() * factor)))
            << x << ", " << y;
    }
}

TEST(GridPaint, WithoutCellsThereIsTheBackgroundOnly) {
    CGridCtrl grid;
    grid.SetGridBkColor(0x123456);
    grid.SetColumnCount(3);
    Show(grid, 200, 100);
    const QImage picture = Picture(grid);
    for (const QPoint point : {QPoint(0, 0), QPoint(199, 0), QPoint(100, 50), QPoint(199, 99)})
        EXPECT_EQ(At(picture, point), 0x123456u);
}

TEST(GridPaint, TheLastColumnReachesTheWindowsEdge) {
    const auto grid = MakeEmptyGrid(3, 2);
    grid->SetColumnWidth(0, 50);
    grid->SetColumnWidth(1, 20);
    Show(*grid, 300, 150);
    EXPECT_EQ(At(Picture(*grid), grid->GetCellRect({1, 1}).topRight()), 0xFFFFFFu);
    EXPECT_EQ(grid->GetCellRect({1, 1}).right(), 299);
    EXPECT_EQ(At(Picture(*grid), QPoint(150, grid->GetCellRect({2, 0}).bottom() + 1)), kPage);
    grid->SetColumnWidth(1, 2000); // cut off at the edge, too
    EXPECT_EQ(grid->GetCellRect({1, 1}).right(), 299);
    grid->SetColumnWidth(1, 0);
    EXPECT_EQ(At(Picture(*grid), QPoint(49, 30)), 0xFFFFFFu);
    EXPECT_EQ(At(Picture(*grid), QPoint(50, 30)), kPage);
}

TEST(GridPaint, SelectedCellsTakeTheSelectedColours) {
    const auto grid = MakeEmptyGrid(4, 3);
    grid->GetCell(2, 1)->SetSelBackClr(0x00FF00);
    Show(*grid, 300, 150);
    grid->SetSelectedRange(2, 0, 2, 2);
    const QImage picture = Picture(*grid);
    for (int x = 0; x < 300; ++x) {
        EXPECT_EQ(At(picture, QPoint(x, grid->GetCellRect({2, 0}).center().y())),
                  x / 100 == 1 ? 0x00FF00u : kSelected)
            << x; // and no line between the cells
        EXPECT_EQ(At(picture, QPoint(x, grid->GetCellRect({1, 0}).bottom())), 0xFFFFFFu) << x;
    }
}

TEST(GridPaint, SelectedTextTakesItsColour) {
    const auto grid = MakeEmptyGrid(2, 1);
    grid->GetCell(1, 0)->SetText(QString(10, QChar(0x2588))); // a full block
    grid->GetCell(1, 0)->SetTextClr(0x0000FF);
    grid->GetCell(1, 0)->SetSelTextClr(0xFF0000);
    Show(*grid, 300, 100);
    const QPoint inText = grid->GetCellRect({1, 0}).topLeft() + QPoint(20, 11);
    EXPECT_EQ(At(Picture(*grid), inText), 0x0000FFu);
    grid->SetSelectedRange(1, 0, 1, 0);
    EXPECT_EQ(At(Picture(*grid), inText), 0xFF0000u);
}

TEST(GridPaint, HeaderCellsAreDividedByTwoTicks) {
    const auto grid = MakeEmptyGrid(2, 3);
    Show(*grid, 300, 100);
    const QImage picture = Picture(*grid);
    for (int col = 0; col < 3; ++col) {
        const QRect rect = grid->GetCellRect({0, col});
        for (int x = rect.left(); x <= rect.right(); ++x) {
            for (int y = rect.top(); y <= rect.bottom(); ++y) {
                const bool tick = (x == rect.right() || x == rect.right() - 2) &&
                                  y >= rect.top() + 4 && y <= rect.bottom() - 4;
                const QColor colour = picture.pixelColor(x, y);
                EXPECT_EQ(colour.lightness() < ToQColor(kPage).lightness(), tick) << x << "," << y;
            }
        }
    }
}

TEST(GridPaint, ASectionBarCoversItsRowWithAShade) {
    const auto grid = MakeEmptyGrid(4, 3);
    MakeSection(*grid, 1, 0xE4E4E4);
    MakeSection(*grid, 2, 0xFFA064);
    Show(*grid, 300, 150);
    const auto expectBars = [&] {
        const QImage picture = Picture(*grid);
        for (const int x : {0, 99, 100, 250, 299}) {
            ExpectShade(picture, grid->GetCellRect({1, 0}), x, QColor(0xE4, 0xE4, 0xE4));
            ExpectShade(picture, grid->GetCellRect({2, 0}), x, QColor(0x64, 0xA0, 0xFF));
        }
    };
    expectBars();
    grid->SetSelectedRange(1, 0, 2, 2); // the selected colour is shaded in the same way
    expectBars();
    grid->SetColumnWidth(1, 900); // the last column lies beyond the edge
    expectBars();
    grid->horizontalScrollBar()->setValue(10'000);
    expectBars();
    grid->SetColumnWidth(2, 0); // and is hidden
    expectBars();
}

TEST(GridPaint, ATextThatDoesNotFitEndsBeforeTheCellDoes) {
    const auto grid = MakeEmptyGrid(2, 2);
    grid->GetCell(1, 0)->SetText(QString(200, u'W'));
    grid->SetColumnWidth(0, 60);
    Show(*grid, 300, 100);
    const QRect rect = grid->GetCellRect({1, 0});
    const QImage picture = Picture(*grid);
    int inked = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x < 300; ++x) {
            if (At(picture, QPoint(x, y)) == 0xFFFFFF)
                continue;
            ++inked;
            EXPECT_LE(x, rect.right() - 4);
            EXPECT_GE(x, rect.left() + 4);
        }
    }
    EXPECT_GT(inked, 50);
}

TEST(GridPaint, AnImageIsDrawnOnlyWhereItFits) {
    const auto grid = MakeEmptyGrid(2, 2);
    QPixmap red(16, 16);
    red.fill(Qt::red);
    grid->SetImageList({QIcon(red)});
    grid->GetCell(1, 0)->SetImage(0);
    grid->SetRowHeight(1, 22);
    Show(*grid, 300, 100);
    const QPoint inImage = grid->GetCellRect({1, 0}).topLeft() + QPoint(12, 11);
    EXPECT_EQ(At(Picture(*grid), inImage), 0x0000FFu);
    grid->SetColumnWidth(0, 23); // one pixel less than margins and image
    EXPECT_EQ(At(Picture(*grid), inImage), 0xFFFFFFu);
    grid->SetColumnWidth(0, 24);
    EXPECT_EQ(At(Picture(*grid), inImage), 0x0000FFu);
    grid->SetRowHeight(1, 17);
    EXPECT_EQ(At(Picture(*grid), inImage), 0xFFFFFFu);
}

TEST(GridPaint, LinesOfTheOtherModesDivideCells) {
    const auto grid = MakeEmptyGrid(3, 2);
    grid->SetGridLineColor(0x0000FF);
    Show(*grid, 300, 150);
    const QRect rect = grid->GetCellRect({1, 0});
    for (const int mode : {GridLines::None, GridLines::Horizontal, GridLines::Vertical,
                           GridLines::Both, GridLines::HeaderMarks}) {
        grid->SetGridLines(mode);
        const QImage picture = Picture(*grid);
        EXPECT_EQ(At(picture, QPoint(50, rect.bottom())) == 0x0000FF,
                  mode == GridLines::Horizontal || mode == GridLines::Both);
        EXPECT_EQ(At(picture, QPoint(rect.right(), rect.center().y())) == 0x0000FF,
                  mode == GridLines::Vertical || mode == GridLines::Both);
    }
}

class CountedCell : public CGridCell {
public:
    bool Draw(QPainter&, int row, int, QRect, bool) override {
        s_rows.insert(row);
        ++s_draws;
        return true;
    }
    static inline std::set<int> s_rows;
    static inline int s_draws = 0;
};

TEST(GridScroll, OnlyVisibleCellsAreDrawnAtAnyPlace) {
    CGridCtrl grid(nullptr, 100'001, 3, 1, 0);
    for (int row = 0; row < 100'001; ++row) {
        for (int col = 0; col < 3; ++col)
            grid.SetCellType(row, col, RuntimeClass<CountedCell>);
    }
    Show(grid, 300, 400);
    for (const int row : {1, 50'000, 90'000, 100'000}) {
        grid.EnsureVisible(row, 0);
        QApplication::processEvents();
        CountedCell::s_rows.clear();
        CountedCell::s_draws = 0;
        grid.viewport()->repaint();
        EXPECT_TRUE(CountedCell::s_rows.contains(0));
        EXPECT_TRUE(CountedCell::s_rows.contains(row));
        EXPECT_LE(CountedCell::s_rows.size(), 400u / grid.GetRowHeight(1) + 3);
        EXPECT_EQ(CountedCell::s_draws, int(CountedCell::s_rows.size()) * 3);
        for (const int seen : CountedCell::s_rows)
            EXPECT_TRUE(grid.GetCellRect({seen, 0}).intersects(grid.viewport()->rect())) << seen;
    }
    grid.RedrawCell(99'999, 0);
    CountedCell::s_draws = 0;
    QApplication::processEvents();
    EXPECT_LE(CountedCell::s_draws, 4); // the cell, and the last column of row and header
}

TEST(GridScroll, PointsAndRectanglesAgreeWithHiddenRowsAndColumns) {
    const auto grid = MakeGrid(60, 8);
    grid->SetFixedColumnCount(1);
    for (const int row : {2, 3, 17, 40, 59})
        grid->SetRowHeight(row, 0);
    for (const int col : {2, 5})
        grid->SetColumnWidth(col, 0);
    grid->SetRowHeight(20, 90);
    Show(*grid, 340, 200);
    for (const int scroll : {0, 7, 250, 10'000}) {
        grid->verticalScrollBar()->setValue(scroll);
        grid->horizontalScrollBar()->setValue(scroll);
        for (int x = 0; x < 340; x += 7) {
            for (int y = 0; y < 200; y += 3) {
                const QPoint point(x, y);
                const CCellID cell = grid->GetCellFromPt(point, true);
                EXPECT_TRUE(grid->GetCellRect(cell).contains(point)) << x << "," << y;
                EXPECT_EQ(grid->GetCellFromPt(point, false) == cell,
                          cell.row >= 1 && cell.col >= 1);
                EXPECT_GT(grid->GetRowHeight(cell.row), 0);
                EXPECT_GT(grid->GetColumnWidth(cell.col), 0);
            }
        }
    }
    EXPECT_EQ(grid->GetCellFromPt(QPoint(340, 5), true), CCellID());
    grid->SetRowCount(2);
    EXPECT_EQ(grid->GetCellFromPt(QPoint(5, 199), true), CCellID());
}

TEST(GridScroll, EnsureVisibleScrollsAsLittleAsNeeded) {
    const auto grid = MakeGrid(1000, 30);
    Show(*grid, 450, 250);
    const QRect below(0, grid->GetRowHeight(0), 450, 250 - grid->GetRowHeight(0));
    for (const CCellID cell : {CCellID{999, 25}, CCellID{1, 0}, CCellID{500, 10}}) {
        grid->EnsureVisible(cell.row, cell.col);
        EXPECT_TRUE(below.contains(grid->GetCellRect(cell))) << cell.row;
        const int scroll = grid->verticalScrollBar()->value();
        grid->EnsureVisible(cell.row, cell.col);
        EXPECT_EQ(grid->verticalScrollBar()->value(), scroll);
    }
}

} // namespace
