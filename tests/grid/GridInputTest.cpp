#include "tests/grid/GridFixture.h"

#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace {

using Notes = std::vector<std::tuple<int, int, int>>;

class GridInput : public ::testing::Test {
protected:
    GridInput() {
        Show(*m_grid, 400, 300);
        m_grid->setFocus();
        m_grid->SetNotifyHandler([this](const GridNotification& note) {
            m_notes.emplace_back(note.code, note.row, note.col);
            m_selectedRows.push_back(m_grid->GetCell(2, 1) && m_grid->GetCell(2, 1)->IsSelected());
        });
    }

    void Click(CCellID cell, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(m_grid->viewport(), button, modifiers,
                          m_grid->GetCellRect(cell).center());
    }

    /// Press, release, double click, release: what the platform sends.
    void DoubleClick(QPoint point) {
        QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, point);
        QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, point);
        QTest::mouseRelease(m_grid->viewport(), Qt::LeftButton, {}, point);
    }

    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(m_grid.get(), static_cast<Qt::Key>(key), modifiers);
    }

    [[nodiscard]] std::vector<int> SelectedRows() const {
        std::vector<int> rows;
        for (int row = 0; row < m_grid->GetRowCount(); ++row) {
            for (int col = 0; col < m_grid->GetColumnCount(); ++col)
                EXPECT_EQ(m_grid->GetCell(row, col)->IsSelected(),
                          m_grid->GetCell(row, 0)->IsSelected());
            if (m_grid->GetCell(row, 0)->IsSelected())
                rows.push_back(row);
        }
        return rows;
    }

    std::unique_ptr<CGridCtrl> m_grid = MakeGrid(200, 4);
    Notes m_notes;
    std::vector<bool> m_selectedRows; ///< row 2, at each notification
};

TEST_F(GridInput, AClickSelectsItsRowBetweenTheNotifications) {
    Click({2, 1});
    EXPECT_EQ(m_notes, (Notes{{GVN_SELCHANGING, 2, 1}, {GVN_SELCHANGED, 2, 1}, {NM_CLICK, 2, 1}}));
    EXPECT_EQ(m_selectedRows, (std::vector<bool>{false, true, true}));
    EXPECT_EQ(SelectedRows(), std::vector<int>{2});
    EXPECT_EQ(m_grid->GetFocusCell(), (CCellID{2, 1}));
    Click({4, 3});
    EXPECT_EQ(SelectedRows(), std::vector<int>{4});
}

TEST_F(GridInput, CtrlKeepsTheSelectionAndShiftExtendsIt) {
    Click({2, 1});
    Click({5, 0}, Qt::ControlModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{2, 5}));
    Click({3, 2}, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 4, 5}));
    Click({6, 2}, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{5, 6}));
}

TEST_F(GridInput, OutsideListModeASingleCellIsSelected) {
    m_grid->SetListMode(false);
    Click({2, 1});
    EXPECT_EQ(m_grid->GetSelectedCount(), 1);
    EXPECT_TRUE(m_grid->GetCell(2, 1)->IsSelected());
    Click({4, 2}, Qt::ShiftModifier);
    EXPECT_EQ(m_grid->GetSelectedCount(), 6);
}

TEST_F(GridInput, AClickInTheHeaderSelectsNothingUnlessColumnsAreSelected) {
    Click({2, 1});
    m_notes.clear();
    Click({0, 3});
    EXPECT_EQ(m_notes, (Notes{{GVN_SELCHANGING, 0, 3}, {GVN_SELCHANGED, 0, 3}, {NM_CLICK, 0, 3}}));
    EXPECT_EQ(SelectedRows(), std::vector<int>{});
    EXPECT_FALSE(m_grid->GetFocusCell().IsValid());
    m_grid->SetFixedColumnSelection(true);
    Click({0, 3});
    EXPECT_EQ(m_grid->GetSelectedCount(), 199);
    EXPECT_TRUE(m_grid->GetCell(199, 3)->IsSelected());
}

TEST_F(GridInput, BesideAllCellsOnlyTheRightButtonIsTold) {
    m_grid->SetRowCount(3);
    const QPoint beside(10, 290);
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, beside);
    DoubleClick(beside);
    QTest::mouseClick(m_grid->viewport(), Qt::MiddleButton, {}, QPoint(10, 30));
    EXPECT_EQ(m_notes, Notes{});
    QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, beside);
    EXPECT_EQ(m_notes, (Notes{{NM_RCLICK, -1, -1}}));
}

TEST_F(GridInput, TheRightButtonSelectsNothing) {
    Click({2, 1}, Qt::NoModifier, Qt::RightButton);
    EXPECT_EQ(m_notes, (Notes{{NM_RCLICK, 2, 1}}));
    EXPECT_EQ(m_grid->GetSelectedCount(), 0);
}

TEST_F(GridInput, ADoubleClickIsOneClickAndOneDoubleClick) {
    DoubleClick(m_grid->GetCellRect({2, 1}).center());
    EXPECT_EQ(
        m_notes,
        (Notes{
            {GVN_SELCHANGING, 2, 1}, {GVN_SELCHANGED, 2, 1}, {NM_CLICK, 2, 1}, {NM_DBLCLK, 2, 1}}));
}

TEST_F(GridInput, ReleasedOverAnotherCellThereIsNoClick) {
    QTest::mousePress(m_grid->viewport(), Qt::LeftButton, {}, m_grid->GetCellRect({2, 1}).center());
    QTest::mouseRelease(m_grid->viewport(), Qt::LeftButton, {},
                        m_grid->GetCellRect({5, 1}).center());
    EXPECT_EQ(m_notes, (Notes{{GVN_SELCHANGING, 2, 1}, {GVN_SELCHANGED, 2, 1}}));
}

TEST_F(GridInput, TheOwnerMayRebuildTheGridInAnyNotification) {
    for (const int code : {GVN_SELCHANGING, GVN_SELCHANGED, NM_CLICK, NM_DBLCLK, NM_RCLICK}) {
        m_grid = MakeGrid(200, 4);
        Show(*m_grid, 400, 300);
        m_grid->SetNotifyHandler([&](const GridNotification& note) {
            if (note.code == code)
                m_grid->DeleteAllItems();
        });
        const QPoint point = m_grid->GetCellRect({7, 1}).center();
        QTest::mouseClick(m_grid->viewport(), Qt::RightButton, {}, point);
        DoubleClick(point);
        EXPECT_EQ(m_grid->GetRowCount(), 0) << code;
        EXPECT_EQ(m_grid->GetSelectedCount(), 0);
    }
}

TEST_F(GridInput, KeysMoveTheFocusTheSelectionAndTheView) {
    m_grid->SetRowHeight(4, 0);
    const int page = (300 - m_grid->GetRowHeight(0)) / m_grid->GetRowHeight(1);
    struct Step {
        int key;
        Qt::KeyboardModifiers modifiers;
        CCellID focus;
    };
    const Step steps[] = {
        {Qt::Key_Down, {}, {3, 1}},
        {Qt::Key_Down, {}, {5, 1}}, // over a hidden row
        {Qt::Key_Up, {}, {3, 1}},
        {Qt::Key_Right, {}, {3, 2}},
        {Qt::Key_End, {}, {3, 3}},
        {Qt::Key_Right, {}, {3, 3}},
        {Qt::Key_Home, {}, {3, 0}},
        {Qt::Key_Left, {}, {3, 0}},
        {Qt::Key_PageDown, {}, {3 + page + 1, 0}},
        {Qt::Key_PageUp, {}, {3, 0}},
        {Qt::Key_PageUp, {}, {1, 0}},
        {Qt::Key_Up, {}, {1, 0}},
        {Qt::Key_End, Qt::ControlModifier, {199, 0}},
        {Qt::Key_Down, {}, {199, 0}},
        {Qt::Key_PageDown, {}, {199, 0}},
        {Qt::Key_Home, Qt::ControlModifier, {1, 0}},
    };
    Click({2, 1});
    for (const Step& step : steps) {
        const CCellID before = m_grid->GetFocusCell();
        m_notes.clear();
        Press(step.key, step.modifiers);
        EXPECT_EQ(m_grid->GetFocusCell().row, step.focus.row) << step.key;
        EXPECT_EQ(m_grid->GetFocusCell().col, step.focus.col) << step.key;
        EXPECT_TRUE(m_grid->viewport()->rect().contains(m_grid->GetCellRect(step.focus)));
        EXPECT_TRUE(m_grid->GetCell(step.focus.row, 0)->IsSelected());
        const auto [row, col] = step.focus;
        EXPECT_EQ(m_notes, before == step.focus
                               ? Notes{}
                               : (Notes{{GVN_SELCHANGING, row, col}, {GVN_SELCHANGED, row, col}}));
    }
}

TEST_F(GridInput, ShiftExtendsFromTheStartCell) {
    Click({5, 1});
    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 4, 5}));
    Press(Qt::Key_Up);
    EXPECT_EQ(SelectedRows(), std::vector<int>{2});
}

TEST_F(GridInput, KeysThatAreNotTheGridsGoToItsParent) {
    Click({5, 1});
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Delete, Qt::Key_Return}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(m_grid.get(), &event);
        EXPECT_FALSE(event.isAccepted());
    }
}

TEST_F(GridInput, TheWheelScrollsLinesAndPartsOfNotchesAddUp) {
    const auto wheel = [&](int delta) {
        QWheelEvent event(QPointF(50, 50), m_grid->viewport()->mapToGlobal(QPointF(50, 50)), {},
                          QPoint(0, delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_grid->viewport(), &event);
        return m_grid->verticalScrollBar()->value();
    };
    const int notch = QApplication::wheelScrollLines() * m_grid->GetRowHeight(1);
    EXPECT_EQ(wheel(-120), notch);
    EXPECT_EQ(wheel(120), 0);
    for (int i = 0; i < 8; ++i)
        wheel(-15);
    EXPECT_EQ(wheel(0), notch);
    EXPECT_EQ(m_grid->GetCellRect({0, 0}).top(), 0); // the header stays
}

} // namespace
