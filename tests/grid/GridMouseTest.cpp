#include "grid/TitleTip.h"
#include "tests/fixtures/PaintedRows.h"
#include "tests/grid/GridInputFixture.h"

#include <QDialog>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

namespace {

using enum GridMouseMode;

TEST_F(GridInput, AClickSelectsItsRowBetweenTheNotifications) {
    std::vector<bool> selected;
    m_onNote = [&](const auto&) { selected.push_back(m_grid->GetCell(2, 1)->IsSelected()); };
    Click({2, 1});
    EXPECT_EQ(Take(), (Notes{{GVN_SELCHANGING, 2, 1},
                             {GVN_SELCHANGED, 2, 1},
                             {NM_CLICK, 2, 1},
                             {WM_COMMAND, 2, 1}}));
    EXPECT_EQ(selected, (std::vector<bool>{false, true, true, true}));
    EXPECT_EQ(SelectedRows(), std::vector<int>{2});
    EXPECT_EQ(m_grid->GetFocusCell(), (CCellID{2, 1}));
    Click({4, 3});
    EXPECT_EQ(SelectedRows(), std::vector<int>{4});
}

/// Each mode that a press leads to, what is selected then, where the focus is, and what is told
/// until after the release at the same point.
TEST_F(GridInput, EachMouseModeIsEnteredByAPressAndEndsWithTheRelease) {
    const auto none = [](CGridCtrl&) {};
    const auto columns = [](CGridCtrl& grid) { grid.SetFixedColumnSelection(true); };
    const auto cells = [](CGridCtrl& grid) { grid.SetListMode(false); };
    const auto fixedColumn = [](CGridCtrl& grid) { grid.SetFixedColumnCount(1); };
    const auto focused = [](CGridCtrl& grid) {
        grid.SetEditable(true);
        grid.SetFocusCell({2, 1});
    };
    const auto draggable = [](CGridCtrl& grid) {
        grid.SetSelectedRange(2, 0, 3, 3);
        grid.EnableDragAndDrop(true);
    };
    const auto click = [](int row, int col) {
        return Notes{{GVN_SELCHANGING, row, col}, {GVN_SELCHANGED, row, col}, {NM_CLICK, row, col}};
    };
    const Notes edit{{GVN_BEGINLABELEDIT, 2, 1}};
    const Notes noDrag{{NM_CLICK, 3, 1}, {GVN_SELCHANGING, 3, 1}, {GVN_SELCHANGED, 3, 1}};
    enum class At { Center, End };
    const struct {
        const char* what;
        std::function<void(CGridCtrl&)> prepare;
        CCellID cell;
        At at;
        GridMouseMode down;
        int selected;
        CCellID focus;
        Notes notes;
    } cases[] = {
        {"header", none, {0, 2}, At::Center, Nothing, 0, {}, click(0, 2)},
        {"whole column", columns, {0, 2}, At::Center, Nothing, 199, {}, click(0, 2)},
        {"fixed column", fixedColumn, {5, 0}, At::Center, Nothing, 3, {}, click(5, 0)},
        {"corner", fixedColumn, {0, 0}, At::Center, SelectAll, 199 * 3, {}, click(0, 0)},
        {"row", none, {2, 1}, At::Center, SelectRows, 4, {2, 1}, click(2, 1)},
        {"cell", cells, {2, 1}, At::Center, SelectCells, 1, {2, 1}, click(2, 1)},
        {"end of a row", fixedColumn, {3, 0}, At::End, SizingRow, 0, {}, {}},
        {"end of a column", none, {0, 1}, At::End, SizingColumn, 0, {}, {}},
        {"focused cell", focused, {2, 1}, At::Center, PrepareEdit, 0, {2, 1}, edit},
        {"selected cell", draggable, {3, 1}, At::Center, PrepareToDrag, 8, {3, 1}, noDrag},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        Renew();
        test.prepare(*m_grid);
        const QRect rect = m_grid->GetCellRect(test.cell);
        const bool column = test.down == SizingColumn;
        const QPoint end = column ? QPoint(rect.right(), 5) : QPoint(5, rect.bottom());
        const QPoint point = test.at == At::Center ? rect.center() : end;
        Move(point);
        const GridMouseMode over = column                   ? OverColDivide
                                   : test.down == SizingRow ? OverRowDivide
                                                            : Nothing;
        EXPECT_EQ(m_grid->GetMouseMode(), over);
        EXPECT_EQ(m_grid->viewport()->cursor().shape(), over == Nothing ? Qt::ArrowCursor
                                                        : column        ? Qt::SizeHorCursor
                                                                        : Qt::SizeVerCursor);
        Down(point);
        EXPECT_EQ(m_grid->GetMouseMode(), test.down);
        EXPECT_EQ(m_grid->GetSelectedCount(), test.selected);
        Up(point);
        EXPECT_EQ(m_grid->GetMouseMode(), Nothing);
        EXPECT_EQ(m_grid->viewport()->cursor().shape(), Qt::ArrowCursor);
        EXPECT_EQ(m_grid->GetFocusCell(), test.focus);
        Notes notes = test.notes;
        if (test.focus.IsValid())
            notes.emplace_back(WM_COMMAND, test.focus.row, test.focus.col);
        EXPECT_EQ(Take(), notes);
    }
}

/// The mode of a grid when a drag begins, which this platform ends at once.
class DragWatch : public QObject {
public:
    explicit DragWatch(CGridCtrl& grid)
        : m_grid(grid) {
        grid.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ChildAdded)
            m_mode = m_grid.GetMouseMode();
        return false;
    }
    GridMouseMode m_mode = Nothing;

private:
    CGridCtrl& m_grid;
};

TEST_F(GridInput, ADragBeginsOnlyWhereItIsAllowedAndTheMouseHasMoved) {
    const DragWatch watch(*m_grid);
    for (const bool allowed : {false, true}) {
        m_grid->EnableDragAndDrop(allowed);
        m_grid->SetSelectedRange(2, 0, 3, 3);
        Down(Center({2, 1}));
        Move(Center({2, 1}) + QPoint(1, 1));
        EXPECT_EQ(m_grid->GetMouseMode(), allowed ? PrepareToDrag : SelectRows);
        EXPECT_EQ(watch.m_mode, Nothing);
        Move(Center({4, 1}));
        EXPECT_EQ(watch.m_mode, allowed ? Dragging : Nothing);
        EXPECT_EQ(m_grid->GetMouseMode(), allowed ? Nothing : SelectRows);
        EXPECT_EQ(SelectedRows(), allowed ? (std::vector<int>{2, 3}) : (std::vector<int>{2, 3, 4}));
        Up(Center({4, 1}));
    }
}

TEST_F(GridInput, CtrlKeepsTheSelectionAndShiftExtendsIt) {
    Click({2, 1});
    Click({5, 0}, Qt::ControlModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{2, 5}));
    Click({3, 2}, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 4, 5}));
    Click({6, 2}, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{5, 6}));
    m_grid->SetListMode(false);
    Click({2, 1});
    Click({4, 2}, Qt::ShiftModifier);
    EXPECT_EQ(m_grid->GetSelectedCount(), 6);
}

TEST_F(GridInput, ASelectionPaintsTheRowsThatItChanges) {
    const auto click = [this](int row, Qt::KeyboardModifiers keys = {}) {
        return [this, row, keys] { Click({row, 1}, keys); };
    };
    const auto select = [this](int first, int last) {
        return [this, first, last] { m_grid->SetSelectedRange(first, 0, last, 3); };
    };
    const struct {
        const char* what;
        std::function<void()> act;
        std::vector<int> rows;
    } cases[] = {{"first", click(2), {2}},
                 {"another", click(9), {2, 9}},
                 {"one more", click(5, Qt::ControlModifier), {5, 9}},
                 {"up to", click(7, Qt::ShiftModifier), {5, 6, 7, 9}},
                 {"the next", [&] { Press(Qt::Key_Down); }, {5, 6, 7, 8}},
                 {"down out of sight", select(8, 150), {9, 10, 11, 12}},
                 {"none", select(-1, -1), {8, 9, 10, 11, 12}}};
    m_grid->resize(400, m_grid->GetCellRect({12, 0}).bottom() + 1);
    const auto picture = [&](int row) {
        const QRect cell = m_grid->GetCellRect({row, 0});
        return m_grid->viewport()->grab(QRect(0, cell.top(), 400, cell.height())).toImage();
    };
    std::vector<QImage> before(13);
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        for (int row = 0; row < 13; ++row)
            before[row] = picture(row);
        PaintedRows painted(*m_grid);
        test.act();
        EXPECT_EQ(painted.Take(), test.rows);
        for (int row = 0; row < 13; ++row)
            EXPECT_TRUE(picture(row) == before[row] || std::ranges::count(test.rows, row)) << row;
    }
}

TEST_F(GridInput, TheSelectionFollowsTheHeldMouseAndStaysWhereThereIsNoCell) {
    Down(Center({3, 1}));
    Move(Center({5, 2}));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 4, 5}));
    m_grid->verticalScrollBar()->setValue(m_grid->GetRowHeight(1) * 3); // as by the wheel
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 4, 5, 6, 7, 8}));
    m_grid->verticalScrollBar()->setValue(0);
    Move(Center({2, 2}));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{2, 3}));
    Move(Center({0, 2}));
    Move(QPoint(-20, 100));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{2, 3}));
    Up(Center({2, 2}));
    // No click, as the button went up elsewhere.
    EXPECT_EQ(Take(), (Notes{{GVN_SELCHANGING, 3, 1}, {GVN_SELCHANGED, 3, 1}, {WM_COMMAND, 3, 1}}));
    Move(Center({7, 2}));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{2, 3}));
}

TEST_F(GridInput, HeldBeyondAnEdgeTheGridScrollsAndSelects) {
    m_grid->SetColumnWidth(1, 600);
    const auto hold = [this](QPoint point, CCellID until) {
        Move(point);
        while (m_grid->GetFocusCell() != until)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_TRUE(m_grid->viewport()->rect().contains(m_grid->GetCellRect(until).topLeft()));
    };
    Down(Center({5, 0}));
    hold({10, 320}, {16, 0});
    EXPECT_EQ(SelectedRows().front(), 5);
    EXPECT_EQ(SelectedRows().back(), 16);
    EXPECT_EQ(m_grid->GetCellFromPt({10, 299}, false).row, 16);
    hold({10, -20}, {1, 0});
    EXPECT_EQ(SelectedRows(), (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(m_grid->verticalScrollBar()->value(), 0);
    hold({450, 100}, {m_grid->GetCellFromPt({10, 100}, false).row, 3});
    EXPECT_EQ(m_grid->horizontalScrollBar()->value(), m_grid->horizontalScrollBar()->maximum());
    hold({-20, 100}, {m_grid->GetFocusCell().row, 0});
    EXPECT_EQ(m_grid->horizontalScrollBar()->value(), 0);
    Up({10, 100});
}

TEST_F(GridInput, WhatTheMouseDidEndsWhereItsReleaseIsNeverSeen) {
    const auto moveAway = [this] { MoveWithoutButton(Center({6, 1})); };
    const auto dialog = [] { // that nobody asked for
        QDialog dialog;
        QTimer::singleShot(0, &dialog, &QDialog::accept);
        dialog.exec();
    };
    const std::function<void()> ends[] = {moveAway, [this] { m_grid->hide(); },
                                          [this] { m_grid->setEnabled(false); }, dialog,
                                          [this] { m_grid->SetRowCount(199); }};
    for (const auto& end : ends) {
        Renew();
        Down(Center({4, 1}));
        end();
        EXPECT_EQ(m_grid->GetMouseMode(), Nothing);
        const std::vector<int> rows = SelectedRows();
        Notes notes{{GVN_SELCHANGING, 4, 1}};
        if (!rows.empty()) // not rebuilt
            notes.emplace_back(GVN_SELCHANGED, 4, 1);
        EXPECT_EQ(Take(), notes);
        Move(Center({7, 1}));
        Up(Center({4, 1}));
        EXPECT_EQ(SelectedRows(), rows);
        EXPECT_EQ(Take(), Notes{});
    }
}

TEST_F(GridInput, ButtonsThatAreNotTheLeftOne) {
    m_grid->SetRowCount(5);
    Click({2, 1}, {}, Qt::RightButton);
    Click({2, 1}, {}, Qt::MiddleButton);
    const QPoint beside(10, 290);
    DoubleClick(beside);
    QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, beside);
    EXPECT_EQ(Take(), (Notes{{NM_RCLICK, 2, 1}, {NM_RCLICK, -1, -1}}));
    EXPECT_EQ(m_grid->GetSelectedCount(), 0);
    m_grid->SetFocusCell({3, 2});
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(m_grid.get(), &menuKey);
    EXPECT_EQ(Take(), (Notes{{NM_RCLICK, 3, 2}}));
    m_grid->SetFocusCell({});
    QApplication::sendEvent(m_grid.get(), &menuKey);
    EXPECT_FALSE(menuKey.isAccepted()); // the parent's
}

TEST_F(GridInput, ADoubleClickIsOneClickAndOneDoubleClick) {
    DoubleClick(Center({2, 1}));
    EXPECT_EQ(Take(), (Notes{{GVN_SELCHANGING, 2, 1},
                             {GVN_SELCHANGED, 2, 1},
                             {NM_CLICK, 2, 1},
                             {NM_DBLCLK, 2, 1},
                             {WM_COMMAND, 2, 1}}));
}

TEST_F(GridInput, TheOwnerMayRebuildTheGridInAnyNotification) {
    m_grid->SetEditable(true);
    for (const int code : {GVN_SELCHANGING, GVN_SELCHANGED, NM_CLICK, NM_DBLCLK, NM_RCLICK,
                           GVN_BEGINLABELEDIT, GVN_ENDLABELEDIT, WM_COMMAND}) {
        for (const int rows : {0, 200}) {
            SCOPED_TRACE(code);
            m_grid->SetRowCount(200);
            m_onNote = [&](const GridNotification& note) {
                if (note.code != code)
                    return;
                m_grid->DeleteAllItems();
                m_grid->SetRowCount(rows);
                m_grid->SetColumnCount(4);
            };
            const QPoint point = Center({7, 1});
            Click({7, 1}, {}, Qt::RightButton);
            DoubleClick(point);
            Click({7, 1});
            Click({7, 1}); // opens the edit
            if (m_grid->IsEditing())
                Press(Qt::Key_Down, Qt::ControlModifier); // ends it
            Press(Qt::Key_Down);
            Take();
            EXPECT_FALSE(m_grid->IsEditing());
            EXPECT_EQ(m_grid->GetMouseMode(), Nothing);
            m_onNote = nullptr;
        }
    }
}

TEST_F(GridInput, ColumnsAreSizedByTheirEndsInTheHeader) {
    struct Case {
        const char* what;
        bool mayHide;
        std::array<int, 4> widths;
        int press; ///< x in the header
        int release;
        std::array<int, 4> expected;
    };
    const Case cases[] = {
        {"wider", true, {100, 100, 100, 100}, 99, 130, {130, 100, 100, 100}},
        {"from behind the end", true, {100, 100, 100, 100}, 203, 180, {100, 80, 100, 100}},
        {"too far from the end", true, {100, 100, 100, 100}, 104, 180, {100, 100, 100, 100}},
        {"hidden", true, {100, 100, 100, 100}, 199, 40, {100, 0, 100, 100}},
        {"no narrower than 1", false, {100, 100, 100, 100}, 199, 40, {100, 1, 100, 100}},
        {"back to sight", true, {100, 0, 100, 100}, 101, 150, {100, 50, 100, 100}},
        {"passed over", false, {100, 0, 100, 100}, 101, 150, {150, 0, 100, 100}},
        {"the last", true, {100, 100, 100, 100}, 398, 350, {100, 100, 100, 50}},
        {"the last, back to sight", true, {100, 100, 100, 0}, 301, 340, {100, 100, 100, 40}},
        {"not moved", true, {100, 100, 100, 100}, 98, 98, {100, 100, 100, 100}},
        {"out of the window", true, {100, 100, 100, 100}, 99, 900, {399, 100, 100, 100}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        m_grid->SetAllowColHide(test.mayHide);
        for (int col = 0; col < 4; ++col)
            m_grid->SetColumnWidth(col, test.widths[col]);
        Down({test.press, 5});
        Move({test.release, 8});
        EXPECT_EQ(m_grid->GetColumnWidth(1), test.widths[1]); // until the button goes up
        Up({test.release, 8});
        std::array<int, 4> widths;
        for (int col = 0; col < 4; ++col)
            widths[col] = m_grid->GetColumnWidth(col);
        EXPECT_EQ(widths, test.expected);
    }
    m_grid->SetColumnWidth(0, 100);
    Drag({99, 5}, {0, 0}); // a release there sets nothing
    EXPECT_EQ(m_grid->GetColumnWidth(0), 100);
    Down({99, 5});
    Move({150, 5});
    Press(Qt::Key_Escape); // nor does one that was broken off
    Up({150, 5});
    EXPECT_EQ(m_grid->GetColumnWidth(0), 100);
    m_grid->SetColumnResize(false);
    Drag({99, 5}, {150, 5});
    EXPECT_EQ(m_grid->GetColumnWidth(0), 100);
    m_grid->SetColumnResize(true);
    m_grid->SetColumnCount(1);
    m_grid->SetColumnWidth(0, 0);
    Drag({1, 5}, {80, 5}); // the only one, hidden
    EXPECT_EQ(m_grid->GetColumnWidth(0), 80);
}

TEST_F(GridInput, WhileAColumnIsSizedALineInvertsTheWindow) {
    Down({99, 5});
    Move({150, 5});
    const QImage with = m_grid->viewport()->grab().toImage();
    Up({99, 5});
    QImage expected = m_grid->viewport()->grab().toImage();
    QImage line = expected.copy(150, 0, 2, 300);
    line.invertPixels();
    QPainter(&expected).drawImage(150, 0, line);
    EXPECT_EQ(with, expected);
}

TEST_F(GridInput, RowsAreSizedByTheirEndsInAFixedColumn) {
    m_grid->SetFixedColumnCount(1);
    const QPoint end = m_grid->GetCellRect({2, 0}).bottomLeft() + QPoint(9, 0);
    const int top = m_grid->GetCellRect({2, 0}).top();
    Drag(end, {9, top + 60});
    EXPECT_EQ(m_grid->GetRowHeight(2), 60);
    Drag({9, top + 59}, {9, top - 30});
    EXPECT_EQ(m_grid->GetRowHeight(2), 1);
}

TEST_F(GridInput, ADoubleClickOnAnEndFitsTheColumn) {
    m_grid->SetAllowColHide(true);
    m_grid->AutoSizeColumn(1);
    const int fit = m_grid->GetColumnWidth(1);
    for (const int x : {198, 202}) { // before and behind the end
        m_grid->SetColumnWidth(1, 100);
        DoubleClick({x, 5});
        EXPECT_EQ(m_grid->GetColumnWidth(1), fit);
    }
    m_grid->SetColumnWidth(1, 100);
    m_grid->SetColumnWidth(2, 0);
    DoubleClick({202, 5}); // the one before the hidden one
    EXPECT_EQ(m_grid->GetColumnWidth(1), fit);
    EXPECT_EQ(m_grid->GetColumnWidth(2), 0);
    EXPECT_EQ(Take(), Notes{});
}

TEST_F(GridInput, TheWheelScrollsByLinesAndPixels) {
    m_grid->SetColumnWidth(0, 900);
    const auto wheel = [&](QPoint angle, QPoint pixels = {}, Qt::KeyboardModifiers keys = {}) {
        QWheelEvent event(QPointF(50, 50), m_grid->viewport()->mapToGlobal(QPointF(50, 50)), pixels,
                          angle, Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_grid->viewport(), &event);
        return QPoint(m_grid->horizontalScrollBar()->value(), m_grid->verticalScrollBar()->value());
    };
    const int notch = QApplication::wheelScrollLines() * m_grid->GetRowHeight(1);
    EXPECT_EQ(wheel({0, -120}), QPoint(0, notch));
    EXPECT_EQ(wheel({0, 240}), QPoint(0, 0));
    for (int i = 0; i < 24; ++i)
        wheel({0, -5}); // parts of a notch add up
    EXPECT_EQ(wheel({0, 0}), QPoint(0, notch));
    EXPECT_EQ(wheel({0, -8}, {0, -7}), QPoint(0, notch + 7));
    EXPECT_GT(wheel({-120, 0}).x(), 0);
    EXPECT_EQ(wheel({120, 0}), QPoint(0, notch + 7));
    EXPECT_GT(wheel({0, -120}, {}, Qt::ShiftModifier).x(), 0);
    EXPECT_EQ(m_grid->GetCellRect({0, 0}).top(), 0); // the header stays
}

TEST_F(GridInput, ATextThatDoesNotFitIsShownOverItsCell) {
    m_grid->GetCell(3, 1)->SetText(QString(60, u'W'));
    m_grid->GetCell(0, 3)->SetText(QString(60, u'W'));
    const auto tip = [this]() -> const QWidget* {
        for (const QWidget* child : m_grid->viewport()->findChildren<QWidget*>())
            if (dynamic_cast<const ZTitleTip*>(child) && child->isVisible())
                return child;
        return nullptr;
    };
    const auto rest = [this](QPoint point) {
        Move(point);
        QHelpEvent event(QEvent::ToolTip, point, m_grid->viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_grid->viewport(), &event);
    };
    rest(Center({2, 1}));
    EXPECT_EQ(tip(), nullptr);
    for (const CCellID cell : {CCellID{3, 1}, CCellID{0, 3}}) {
        rest(Center(cell));
        ASSERT_NE(tip(), nullptr);
        const QRect rect = m_grid->GetCellRect(cell);
        EXPECT_EQ(tip()->y(), rect.top());
        EXPECT_GT(tip()->width(), rect.width());
        EXPECT_TRUE(m_grid->viewport()->rect().contains(tip()->geometry()));
        EXPECT_EQ(m_grid->viewport()->childAt(Center(cell)), nullptr); // for the mouse
    }
    const auto leave = [this] {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(m_grid->viewport(), &event);
    };
    const auto moveOn = [this] { MoveWithoutButton(Center({3, 2})); }; // a cell that it covers
    const auto click = [this] { Click({3, 1}); };
    const std::function<void()> ends[] = {leave,
                                          moveOn,
                                          click,
                                          [this] { Press(Qt::Key_Down); },
                                          [this] { m_grid->verticalScrollBar()->setValue(9); },
                                          [this] { m_grid->InsertRows(1, 1); },
                                          [this] { m_grid->hide(); }};
    for (const auto& end : ends) {
        rest(Center({m_grid->GetRowCount() - 197, 1}));
        ASSERT_NE(tip(), nullptr);
        end();
        EXPECT_EQ(tip(), nullptr);
    }
    m_grid->show();
    m_grid->EnableTitleTips(false);
    rest(Center({3, 1}));
    EXPECT_EQ(tip(), nullptr);
}

} // namespace
