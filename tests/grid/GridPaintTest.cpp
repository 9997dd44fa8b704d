#include "drawing/MeasuredFont.h"
#include "grid/GridPainting.h"
#include "tests/grid/GridFixture.h"

#include <QImage>

#include <cmath>
#include <set>

namespace {

constexpr COLORREF kPage = 0xF6F6F6;
constexpr qreal kScales[] = {1, 1.25};

QImage Picture(CGridCtrl& grid, qreal scale = 1) {
    QImage picture(grid.viewport()->size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    grid.viewport()->render(&picture);
    return picture;
}

COLORREF At(const QImage& picture, QPoint point) {
    return ToColorRef(picture.pixelColor(point));
}

QRect Scaled(const QRect& rect, qreal scale) {
    const QPoint start(qRound(rect.left() * scale), qRound(rect.top() * scale));
    const QPoint end(qRound((rect.right() + 1) * scale), qRound((rect.bottom() + 1) * scale));
    return QRect(start, end - QPoint(1, 1));
}

template <class Check>
void ForEachPixel(const QRect& rect, Check check) {
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            check(QPoint(x, y));
    }
}

/// What lies around all pixels in which two pictures differ.
QRect Changed(const QImage& before, const QImage& after) {
    QRect changed;
    ForEachPixel(before.rect(), [&](QPoint at) {
        if (before.pixel(at) != after.pixel(at))
            changed |= QRect(at, QSize(1, 1));
    });
    return changed;
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

TEST(GridPaint, CellsLeaveNoSeamsUpToTheWindowsEdge) {
    const auto grid = MakeEmptyGrid(6, 4);
    grid->SetGridBkColor(0x0000FF);
    MakeTitle(*grid, 3);
    for (const int lastWidth : {20, 2000}) { // too narrow for the window, and cut off by it
        for (int i = 0; i < 4; ++i) {
            grid->SetColumnWidth(i, i < 3 ? 31 + i : lastWidth);
            grid->SetRowHeight(i, 20 + i);
        }
        Show(*grid, 301, 201);
        for (const qreal scale : kScales) {
            const QImage picture = Picture(*grid, scale);
            const int end = Scaled(grid->GetCellRect({5, 3}), scale).bottom();
            ForEachPixel(picture.rect(), [&](QPoint at) {
                EXPECT_EQ(At(picture, at) == 0x0000FF, at.y() > end) << at.x() << "," << at.y();
            });
        }
    }
    grid->SetRowCount(0);
    EXPECT_EQ(At(Picture(*grid), QPoint(0, 0)), 0x0000FFu);
}

TEST(GridPaint, SelectedCellsTakeTheSelectedColours) {
    const auto grid = MakeEmptyGrid(4, 3);
    grid->GetCell(2, 1)->SetSelBackClr(0x00FF00);
    grid->GetCell(2, 2)->SetText(QString(10, QChar(0x2588))); // a full block
    grid->GetCell(2, 2)->SetTextClr(0x0000FF);
    grid->GetCell(2, 2)->SetSelTextClr(0xFF0000);
    Show(*grid, 300, 150);
    const QRect row = grid->GetCellRect({2, 0});
    const QPoint inText = row.topLeft() + QPoint(220, 11);
    EXPECT_EQ(At(Picture(*grid), inText), 0x0000FFu);
    grid->SetSelectedRange(2, 0, 2, 2);
    const QImage picture = Picture(*grid);
    EXPECT_EQ(At(picture, inText), 0xFF0000u);
    for (int x = 0; x < 300; ++x) { // and no line between the cells
        EXPECT_EQ(At(picture, QPoint(x, row.bottom())), x / 100 == 1 ? 0x00FF00u : 0xDFBE7Au) << x;
        EXPECT_EQ(At(picture, QPoint(x, row.top() - 1)), 0xFFFFFFu) << x;
    }
}

TEST(GridPaint, HeaderCellsAreDividedByTwoTicks) {
    const auto grid = MakeEmptyGrid(2, 3);
    grid->SetColumnWidth(0, 101);
    Show(*grid, 300, 100);
    for (const qreal scale : kScales) {
        const QImage picture = Picture(*grid, scale);
        const int width = qRound(scale);
        const int air = qRound(4 * scale);
        for (int col = 0; col < 3; ++col) {
            const QRect rect = Scaled(grid->GetCellRect({0, col}), scale);
            ForEachPixel(rect, [&](QPoint at) {
                const int line = (rect.right() - at.x()) / width;
                const bool tick = (line == 0 || line == 2) && at.y() >= rect.top() + air &&
                                  at.y() <= rect.bottom() - air;
                EXPECT_EQ(At(picture, at) != kPage, tick) << scale << ": " << at.x();
            });
        }
    }
}

TEST(GridPaint, ASectionBarCoversItsRowWithAShade) {
    const auto grid = MakeEmptyGrid(4, 3);
    MakeTitle(*grid, 1);
    CGridCellBase& title = *grid->GetCell(1, 2);
    title.SetText(QString());
    title.SetBackClr(0xE4E4E4);
    title.SetSelBackClr(0xFFA064);
    Show(*grid, 301, 150);
    const std::pair<std::function<void()>, COLORREF> steps[] = {
        {[] {}, 0xE4E4E4},
        {[&] { grid->SetSelectedRange(1, 0, 1, 2); }, 0xFFA064},
        {[&] { grid->SetColumnWidth(1, 900); }, 0xFFA064}, // the last one not seen
        {[&] { grid->SetColumnWidth(2, 0); }, 0xFFA064},   // and hidden
    };
    for (const auto& [step, colour] : steps) {
        const QColor base = ToQColor(colour);
        step();
        for (const qreal scale : kScales) {
            const QImage picture = Picture(*grid, scale);
            const QRect bar = Scaled(grid->GetCellRect({1, 0}), scale);
            for (int y = 0; y < bar.height(); ++y) {
                const double part = double(y) / bar.height();
                const double factor = std::sin(part * 3.1415926 - 0.3) * 0.2 + 0.8;
                const QColor line(int(base.red() * factor), int(base.green() * factor),
                                  int(base.blue() * factor));
                for (const int x : {0, 99, 100, 250, picture.width() - 1})
                    EXPECT_EQ(picture.pixelColor(x, bar.top() + y), line) << scale << ": " << y;
            }
        }
    }
}

TEST(GridPaint, AFrameGoesRoundTheFocusedCell) {
    const auto grid = MakeEmptyGrid(4, 3);
    grid->SetColumnWidth(0, 47);
    Show(*grid, 300, 150);
    grid->setFocus();
    grid->SetFocusCell({2, 1});
    for (const qreal scale : kScales) {
        const QImage picture = Picture(*grid, scale);
        const int width = qRound(scale);
        const QRect frame = Scaled(grid->GetCellRect({2, 1}), scale);
        const QRect inside = frame.adjusted(width, width, -width, -width);
        ForEachPixel(frame.adjusted(-5, -5, 5, 5), [&](QPoint at) {
            EXPECT_EQ(At(picture, at) == 0, frame.contains(at) && !inside.contains(at))
                << scale << ": " << at.x() << "," << at.y();
        });
    }
    grid->SetGridLines(GridLines::Both);
    grid->SetGridLineColor(0x0000FF);
    const QImage lines = Picture(*grid);
    const QRect cell = grid->GetCellRect({1, 0});
    ForEachPixel(cell, [&](QPoint at) {
        EXPECT_EQ(At(lines, at) == 0x0000FF, at.y() == cell.bottom() || at.x() == cell.right());
    });
}

TEST(GridPaint, TheSortArrowPointsUpOrDownAtTheEndOfItsHeader) {
    const auto grid = MakeEmptyGrid(3, 3);
    const int line = grid->GetCell(0, 1)->GetFontObject().Height();
    for (const int height : {line + 2, 60}) { // too low for an arrow of a line's height, and not
        grid->SetRowHeight(0, height);
        grid->SetSortColumn(-1, true);
        Show(*grid, 300, 150);
        const QImage plain = Picture(*grid);
        const QRect room = grid->GetCellRect({0, 1}).adjusted(4, 1, -8, -1);
        for (const bool ascending : {true, false}) {
            grid->SortItems(nullptr, 1, ascending);
            const QImage picture = Picture(*grid);
            const QRect arrow = Changed(plain, picture);
            EXPECT_NEAR(arrow.right(), room.right() - 1, 1);
            EXPECT_NEAR(arrow.height(), std::min(room.height() - 4, line) + 2, 1);
            const auto widthOfRows = [&](int first) {
                const QRect rows(0, first, 300, 3);
                return Changed(plain.copy(rows), picture.copy(rows)).width();
            };
            EXPECT_EQ(widthOfRows(arrow.top()) < widthOfRows(arrow.bottom() - 2), ascending);
        }
    }
}

TEST(GridPaint, ATextStaysInsideTheMarginsOfItsCell) {
    const auto grid = MakeEmptyGrid(2, 3);
    grid->SetColumnWidth(1, 60);
    Show(*grid, 300, 100);
    const QImage plain = Picture(*grid);
    grid->GetCell(1, 1)->SetText(QString(200, u'W'));
    const QRect room = grid->GetCellRect({1, 1}).adjusted(4, 1, -4, -1);
    const QRect text = Changed(plain, Picture(*grid));
    EXPECT_TRUE(room.contains(text));
    EXPECT_GT(text.width(), 40);
}

TEST(GridPaint, ARightToLeftApplicationShowsTheSameGrid) {
    QImage pictures[2];
    for (const auto direction : {Qt::RightToLeft, Qt::LeftToRight}) {
        QApplication::setLayoutDirection(direction);
        const auto grid = MakeGrid(40, 5);
        grid->GetCell(1, 1)->SetText("שלום, world 12!");
        grid->resize(300, 200);
        grid->show();
        grid->horizontalScrollBar()->setValue(30);
        pictures[direction] = grid->grab().toImage(); // with its scroll bars
    }
    EXPECT_TRUE(pictures[Qt::RightToLeft] == pictures[Qt::LeftToRight]);
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
        EXPECT_TRUE(CountedCell::s_rows.contains(0) && CountedCell::s_rows.contains(row));
        EXPECT_LE(CountedCell::s_rows.size(), 400u / grid.GetRowHeight(1) + 3);
        EXPECT_EQ(CountedCell::s_draws, int(CountedCell::s_rows.size()) * 3);
    }
    grid.RedrawCell(99'999, 0);
    CountedCell::s_draws = 0;
    QApplication::processEvents();
    EXPECT_LE(CountedCell::s_draws, 4); // the cell, and the last column of row and header
}

TEST(GridScroll, PointsAndRectanglesAgreeWithHiddenRowsAndColumns) {
    const auto grid = MakeGrid(60, 8);
    for (const int row : {2, 3, 17, 40, 59})
        grid->SetRowHeight(row, 0);
    for (const int col : {2, 5})
        grid->SetColumnWidth(col, 0);
    grid->SetRowHeight(20, 90);
    Show(*grid, 340, 200);
    for (const int scroll : {0, 7, 250, 10'000}) {
        grid->verticalScrollBar()->setValue(scroll);
        grid->horizontalScrollBar()->setValue(scroll);
        ForEachPixel(grid->viewport()->rect(), [&](QPoint point) {
            const CCellID cell = grid->GetCellFromPt(point, true);
            EXPECT_TRUE(grid->GetCellRect(cell).contains(point)) << point.x() << "," << point.y();
            EXPECT_EQ(grid->GetCellFromPt(point, false) == cell, cell.row >= 1);
            EXPECT_GT(grid->GetRowHeight(cell.row), 0);
            EXPECT_GT(grid->GetColumnWidth(cell.col), 0);
        });
    }
    EXPECT_EQ(grid->GetCellFromPt(QPoint(340, 5), true), CCellID());
    grid->SetRowCount(2);
    EXPECT_EQ(grid->GetCellFromPt(QPoint(5, 199), true), CCellID());
}

TEST(GridScroll, EnsureVisibleScrollsAsLittleAsNeeded) {
    const auto grid = MakeGrid(1000, 30);
    Show(*grid, 450, 250);
    const QRect below(0, grid->GetRowHeight(0), 450, 250 - grid->GetRowHeight(0));
    for (const CCellID cell : {CCellID{999, 25}, {1, 0}, {500, 10}}) {
        grid->EnsureVisible(cell.row, cell.col);
        EXPECT_TRUE(below.contains(grid->GetCellRect(cell))) << cell.row;
        const int scroll = grid->verticalScrollBar()->value();
        grid->EnsureVisible(cell.row, cell.col);
        EXPECT_EQ(grid->verticalScrollBar()->value(), scroll);
    }
}

} // namespace
