#include "tests/grid/GridInputFixture.h"

#include <QClipboard>

TEST_F(GridInput, KeysMoveTheFocusTheSelectionAndTheView) {
    m_grid->SetRowHeight(4, 0);
    m_grid->SetColumnWidth(2, 0);
    for (const int row : {1, 199})
        m_grid->SetRowHeight(row, 0);
    const int page = (300 - m_grid->GetRowHeight(0)) / m_grid->GetRowHeight(2);
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        CCellID focus;
    } steps[] = {{Qt::Key_Down, {}, {3, 1}},
                 {Qt::Key_Down, {}, {5, 1}}, // over a hidden row
                 {Qt::Key_Up, {}, {3, 1}},
                 {Qt::Key_Right, {}, {3, 3}}, // over a hidden column
                 {Qt::Key_Right, {}, {3, 3}},
                 {Qt::Key_Home, {}, {3, 0}},
                 {Qt::Key_Left, {}, {3, 0}},
                 {Qt::Key_End, {}, {3, 3}},
                 {Qt::Key_Left, {}, {3, 1}},
                 {Qt::Key_PageDown, {}, {3 + page + 1, 1}},
                 {Qt::Key_PageUp, {}, {3, 1}},
                 {Qt::Key_PageUp, {}, {2, 1}},
                 {Qt::Key_Up, {}, {2, 1}},
                 {Qt::Key_End, Qt::ControlModifier, {198, 1}},
                 {Qt::Key_Down, {}, {198, 1}},
                 {Qt::Key_PageDown, {}, {198, 1}},
                 {Qt::Key_Up, {}, {197, 1}},
                 {Qt::Key_PageDown, {}, {198, 1}}, // the end of the page is hidden
                 {Qt::Key_Home, Qt::ControlModifier, {2, 1}}};
    Click({2, 1});
    Take();
    for (const auto& step : steps) {
        SCOPED_TRACE(step.key);
        const CCellID before = m_grid->GetFocusCell();
        Press(step.key, step.modifiers);
        EXPECT_EQ(m_grid->GetFocusCell(), step.focus);
        EXPECT_TRUE(m_grid->viewport()->rect().contains(m_grid->GetCellRect(step.focus)));
        EXPECT_TRUE(m_grid->GetCell(step.focus.row, 0)->IsSelected());
        EXPECT_EQ(Take(), before == step.focus ? "" : Selecting(step.focus));
    }
    Press(Qt::Key_Tab);
    EXPECT_EQ(m_grid->GetFocusCell(), (CCellID{2, 1}));
}

TEST_F(GridInput, ShiftExtendsFromTheStartCell) {
    Click({5, 1});
    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 4, 5}));
    Press(Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_EQ(SelectedRows().front(), 5);
    Press(Qt::Key_Up);
    EXPECT_EQ(SelectedRows().size(), 1u);
}

TEST_F(GridInput, KeysThatAreNotTheGridsGoToItsParent) {
    const auto takes = [this](int key, Qt::KeyboardModifiers keys, const char* text) {
        QKeyEvent event(QEvent::KeyPress, key, keys, QString::fromLatin1(text));
        QApplication::sendEvent(m_grid.get(), &event);
        return event.isAccepted();
    };
    using std::tuple;
    const Qt::KeyboardModifiers none, ctrl = Qt::ControlModifier, alt = Qt::AltModifier;
    m_grid->SetEditable(true);
    m_grid->SetFocusCell({5, 1});
    for (const auto& [key, keys, text] :
         {tuple(Qt::Key_Space, none, " "), tuple(Qt::Key_Delete, none, "\x7f"),
          tuple(Qt::Key_Return, none, "\r"), tuple(Qt::Key_Escape, none, "\x1b"),
          tuple(Qt::Key_A, ctrl, "a"), tuple(Qt::Key_V, ctrl, "\x16"), tuple(Qt::Key_A, alt, "a"),
          tuple(Qt::Key_F2, alt, "")})
        EXPECT_FALSE(takes(key, keys, text)) << key;
    EXPECT_EQ(m_grid->GetFocusCell(), (CCellID{5, 1}));
    EXPECT_FALSE(m_grid->IsEditing());
    m_grid->SetFocusCell({}); // nor has it a use for its own, then
    EXPECT_FALSE(takes(Qt::Key_F2, {}, ""));
}

TEST_F(GridInput, TheSelectedTextsAreCopiedInRowsAndColumns) {
    m_grid->SetSelectedRange(9, 0, 10, 3);
    m_grid->SetFocusCell({9, 0});
    for (const int key : {Qt::Key_C, Qt::Key_Insert}) {
        QApplication::clipboard()->clear();
        Press(key, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), "9/0\t9/1\t9/2\t9/3\n10/0\t10/1\t10/2\t10/3");
    }
}
