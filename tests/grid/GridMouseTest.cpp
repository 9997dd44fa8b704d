#include "grid/TitleTip.h"
#include "tests/fixtures/PaintedRows.h"
#include "tests/grid/GridInputFixture.h"

#include <QTimer>
#include <QWheelEvent>

using enum GridMouseMode;

/// Each mode that a press leads to, what is selected then, where the focus is, and what is told
/// until after the release at the same point.
TEST_F(GridInput, EachMouseModeIsEnteredByAPressAndEndsWithTheRelease) {
    const struct {
        CCellID cell;
        GridMouseMode down;
        int selected;
        CCellID focus;
        std::string notes;
    } cases[] = {{{0, 2}, Nothing, 0, {}, Selecting({0, 2}) + ", click 0/2"},
                 {{0, 0}, SelectAll, 199 * 3, {}, Selecting({0, 0}) + ", click 0/0"},
                 {{2, 1}, SelectRows, 4, {2, 1}, Selecting({2, 1}) + ", click 2/1, command 2/1"},
                 {{0, 1}, SizingColumn, 0, {}, ""},
                 {{2, 1}, PrepareEdit, 0, {2, 1}, "edit 2/1, command 2/1"}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.notes);
        Renew();
        m_grid->SetEditable(test.down == PrepareEdit);
        if (test.down == SelectAll)
            m_grid->SetFixedColumnCount(1);
        m_grid->SetFocusCell(test.focus);
        const bool sizes = test.down == SizingColumn;
        const QRect rect = m_grid->GetCellRect(test.cell);
        const QPoint point = sizes ? rect.topRight() + QPoint(0, 5) : rect.center();
        const int before = m_grid->GetSelectedCount();
        m_onNote = [&](const GridNotification& note) {
            EXPECT_EQ(m_grid->GetSelectedCount(),
                      note.code == GVN_SELCHANGING ? before : test.selected);
        };
        Move(point);
        EXPECT_EQ(m_grid->GetMouseMode(), sizes ? OverColDivide : Nothing);
        EXPECT_EQ(m_grid->viewport()->cursor().shape(),
                  sizes ? Qt::SizeHorCursor : Qt::ArrowCursor);
        Down(point);
        EXPECT_EQ(m_grid->GetMouseMode(), test.down);
        EXPECT_EQ(m_grid->GetSelectedCount(), test.selected);
        Up(point);
        EXPECT_EQ(m_grid->GetMouseMode(), Nothing);
        EXPECT_EQ(m_grid->viewport()->cursor().shape(), Qt::ArrowCursor);
        EXPECT_EQ(m_grid->GetFocusCell(), test.focus);
        EXPECT_EQ(Take(), test.notes);
    }
}

TEST_F(GridInput, CtrlKeepsTheSelectionShiftExtendsItAndWhatChangesIsPainted) {
    using Rows = std::vector<int>;
    const std::tuple<CCellID, Qt::KeyboardModifier, Rows, Rows> clicks[] = {
        {{2, 1}, Qt::NoModifier, {2}, {2}},
        {{9, 1}, Qt::NoModifier, {9}, {2, 9}},
        {{5, 0}, Qt::ControlModifier, {5, 9}, {5, 9}},
        {{7, 2}, Qt::ShiftModifier, {5, 6, 7}, {5, 6, 7, 9}},
        {{3, 2}, Qt::ShiftModifier, {3, 4, 5}, {3, 4, 6, 7}}};
    m_grid->resize(400, m_grid->GetCellRect({12, 0}).bottom() + 1);
    PaintedRows painted(*m_grid);
    for (const auto& [cell, keys, selected, rows] : clicks) {
        Click(cell, keys);
        EXPECT_EQ(SelectedRows(), selected);
        EXPECT_EQ(painted.Take(), rows);
    }
    Press(Qt::Key_Down);
    EXPECT_EQ(painted.Take(), (Rows{3, 4, 5}));
    m_grid->SetSelectedRange(4, 0, 150, 3);
    EXPECT_EQ(painted.Take(), (Rows{5, 6, 7, 8, 9, 10, 11, 12}));
    m_grid->SetSelectedRange(-1, 0, -1, 3);
    EXPECT_EQ(painted.Take(), (Rows{4, 5, 6, 7, 8, 9, 10, 11, 12}));
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
    EXPECT_EQ(Take(), Selecting({3, 1}) + ", command 3/1");
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
    const auto dialog = [] { // that nobody asked for
        QDialog dialog;
        QTimer::singleShot(0, &dialog, &QDialog::accept);
        dialog.exec();
    };
    const QPoint other = Center({6, 1});
    const std::function<void()> ends[] = {
        [&] { MoveWithoutButton(other); }, [&] { m_grid->hide(); },
        [&] { m_grid->setEnabled(false); }, dialog, [&] { m_grid->SetRowCount(199); }};
    for (const auto& end : ends) {
        Renew();
        Down(Center({4, 1}));
        end();
        EXPECT_EQ(m_grid->GetMouseMode(), Nothing);
        const std::vector<int> rows = SelectedRows();
        const bool rebuilt = rows.empty();
        EXPECT_EQ(Take(), rebuilt ? "selecting 4/1" : Selecting({4, 1}));
        Move(Center({7, 1}));
        Up(Center({4, 1}));
        EXPECT_EQ(SelectedRows(), rows);
        EXPECT_EQ(Take(), "");
    }
}

TEST_F(GridInput, DoubleClicksAndButtonsThatAreNotTheLeftOne) {
    m_grid->SetRowCount(5);
    DoubleClick(Center({2, 1})); // one click and one double click
    EXPECT_EQ(Take(), Selecting({2, 1}) + ", click 2/1, double 2/1, command 2/1");
    m_grid->SetSelectedRange(-1, -1, -1, -1);
    m_grid->SetFocusCell({});
    Click({2, 1}, {}, Qt::RightButton);
    Click({2, 1}, {}, Qt::MiddleButton);
    const QPoint beside(10, 290);
    DoubleClick(beside);
    QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, beside);
    EXPECT_EQ(Take(), "right 2/1, right -1/-1");
    EXPECT_EQ(m_grid->GetSelectedCount(), 0);
    m_grid->SetFocusCell({3, 2});
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(m_grid.get(), &menuKey);
    EXPECT_EQ(Take(), "right 3/2");
    m_grid->SetFocusCell({});
    QApplication::sendEvent(m_grid.get(), &menuKey);
    EXPECT_FALSE(menuKey.isAccepted()); // the parent's
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
            Click({7, 1});                            // opens the edit
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
    using Widths = std::array<int, 4>;
    const Widths plain{100, 100, 100, 100};
    const struct {
        const char* what;
        Widths widths;
        int press; ///< x in the header
        int release;
        Widths expected;
    } cases[] = {{"wider", plain, 99, 130, {130, 100, 100, 100}},
                 {"from behind the end", plain, 203, 180, {100, 80, 100, 100}},
                 {"too far off", plain, 104, 180, plain},
                 {"hidden", plain, 199, 40, {100, 0, 100, 100}},
                 {"back to sight", {100, 0, 100, 100}, 101, 150, {100, 50, 100, 100}},
                 {"the last", plain, 398, 350, {100, 100, 100, 50}},
                 {"the last, back to sight", {100, 100, 100, 0}, 301, 340, {100, 100, 100, 40}},
                 {"not moved", plain, 98, 98, plain},
                 {"out of the window", plain, 99, 900, {399, 100, 100, 100}}};
    m_grid->SetAllowColHide(true);
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        for (int col = 0; col < 4; ++col)
            m_grid->SetColumnWidth(col, test.widths[col]);
        Down({test.press, 5});
        Move({test.release, 8});
        EXPECT_EQ(m_grid->GetColumnWidth(1), test.widths[1]); // until the button goes up
        Up({test.release, 8});
        Widths widths;
        for (int col = 0; col < 4; ++col)
            widths[col] = m_grid->GetColumnWidth(col);
        EXPECT_EQ(widths, test.expected);
    }
    m_grid->SetColumnWidth(0, 100);
    Drag({99, 5}, {0, 0}); // a release there sets nothing
    Down({99, 5});
    Move({150, 5});
    Press(Qt::Key_Escape); // nor does one that was broken off
    Up({150, 5});
    EXPECT_EQ(m_grid->GetColumnWidth(0), 100);
    m_grid->SetAllowColHide(false);
    Drag({99, 5}, {10, -40});
    EXPECT_EQ(m_grid->GetColumnWidth(0), 10);
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
    EXPECT_EQ(Take(), "");
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
    QEvent leave(QEvent::Leave);
    const CCellID cell{3, 1};
    const QPoint covered = Center({3, 2});
    const std::function<void()> ends[] = {
        [&] { QApplication::sendEvent(m_grid->viewport(), &leave); },
        [&] { MoveWithoutButton(covered); },
        [&] { Click(cell); },
        [&] { Press(Qt::Key_Down); },
        [&] { m_grid->verticalScrollBar()->setValue(9); },
        [&] { m_grid->InsertRows(1, 1); },
        [&] { m_grid->hide(); }};
    for (const auto& end : ends) {
        rest(Center({m_grid->GetRowCount() - 197, 1}));
        ASSERT_NE(tip(), nullptr);
        end();
        EXPECT_EQ(tip(), nullptr);
    }
}
