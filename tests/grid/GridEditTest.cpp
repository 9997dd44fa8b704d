#include "grid/GridCellCheck.h"
#include "tests/grid/GridInputFixture.h"

struct GridEdit : GridInput {
    GridEdit() {
        m_grid->SetEditable(true);
        m_grid->SetFocusCell({2, 1});
    }
    [[nodiscard]] QString Text() const { return TextAt(*m_grid, 2, 1); }
};

TEST_F(GridEdit, TheSecondClickOpensTheEditWhenTheButtonGoesUp) {
    const QPoint inText = m_grid->GetCellRect({2, 1}).topLeft() + QPoint(8, 10);
    Down(inText);
    EXPECT_FALSE(m_grid->IsEditing());
    Up(inText);
    EXPECT_TRUE(m_grid->IsEditing());
    EXPECT_EQ(m_grid->GetSelectedCount(), 0);
    EXPECT_EQ(Take(), "edit 2/1, command 2/1");
    EXPECT_TRUE(m_grid->GetCellRect({2, 1}).contains(Editor()->geometry()));
    Press(Qt::Key_Return);
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_FALSE(m_changed || m_grid->GetCell(2, 1)->IsModified());
    Drag(inText, Center({3, 1})); // the mouse has left the text
    Drag(inText, m_grid->GetCellRect({2, 1}).topLeft() + QPoint(1, 1));
    EXPECT_FALSE(m_grid->IsEditing());
    Click({3, 1}); // the first one
    EXPECT_FALSE(m_grid->IsEditing());
}

TEST_F(GridEdit, AQuickSecondClickOnTheEditIsADoubleClickOnTheCell) {
    Click({2, 1});
    ASSERT_TRUE(m_grid->IsEditing());
    QTest::mouseDClick(Editor(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_FALSE(m_grid->IsEditing());
    EXPECT_EQ(Take(), "edit 2/1, edited 2/1, double 2/1, command 2/1");
    EXPECT_FALSE(m_changed);
}

TEST_F(GridEdit, CellsThatAreNotEdited) {
    m_grid->SetCellType(3, 1, RuntimeClass<CGridCellCheck>);
    m_grid->SetItemState(4, 1, GridState::ReadOnly);
    m_grid->SetRowHeight(5, 0);
    m_grid->SetColumnWidth(2, 0);
    for (const CCellID cell : {CCellID{0, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 2}, {-1, -1}, {200, 0}})
        EXPECT_FALSE(m_grid->OnEditCell(cell)) << cell.row;
    m_grid->SetFocusCell({3, 1});
    Click({3, 1}); // a check box is clicked as often as one likes
    EXPECT_EQ(Take(), Selecting({3, 1}) + ", click 3/1, command 3/1");
    m_grid->SetEditable(false);
    EXPECT_FALSE(m_grid->OnEditCell({6, 1}));
    m_grid->SetEditable(true);
    m_onNote = [](GridNotification& note) { note.allowed = false; };
    EXPECT_FALSE(m_grid->OnEditCell({6, 1}));
}

TEST_F(GridEdit, AnEditThatTheOwnerOpensMeanwhileEndsFirst) {
    m_onNote = [this](const GridNotification& note) {
        if (note.code == GVN_BEGINLABELEDIT && note.row == 2)
            m_grid->OnEditCell({3, 1});
    };
    Press(Qt::Key_F2);
    EXPECT_EQ(Take(), "edit 2/1, edit 3/1, edited 3/1");
    Press(Qt::Key_Return);
    EXPECT_EQ(Take(), "edited 2/1");
}

TEST_F(GridEdit, EachEndingKeepsOrDropsTheText) {
    constexpr QStringView old = u"2/1";
    const struct {
        Qt::Key open; ///< F2, or the X that is typed
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool ends;
        QStringView text; ///< of the cell afterwards, or of the field that is still there
        CCellID focus;
    } cases[] = {{Qt::Key_F2, Qt::Key_Return, {}, true, u"y", {2, 1}},
                 {Qt::Key_F2, Qt::Key_Enter, {}, true, u"y", {2, 1}},
                 {Qt::Key_F2, Qt::Key_Escape, {}, true, old, {2, 1}},
                 {Qt::Key_F2, Qt::Key_Down, {}, false, u"y", {2, 1}},
                 {Qt::Key_F2, Qt::Key_PageUp, {}, false, u"y", {2, 1}},
                 {Qt::Key_F2, Qt::Key_Delete, {}, false, u"y", {2, 1}},
                 {Qt::Key_F2, Qt::Key_Down, Qt::ControlModifier, true, u"y", {3, 1}},
                 {Qt::Key_X, Qt::Key_Return, {}, true, u"xy", {2, 1}},
                 {Qt::Key_X, Qt::Key_Escape, {}, true, old, {2, 1}},
                 {Qt::Key_X, Qt::Key_Up, {}, true, u"xy", {1, 1}},
                 {Qt::Key_X, Qt::Key_Down, {}, true, u"xy", {3, 1}},
                 {Qt::Key_X, Qt::Key_Right, {}, true, u"xy", {2, 2}},
                 {Qt::Key_X, Qt::Key_PageUp, {}, true, u"xy", {1, 1}},
                 {Qt::Key_X, Qt::Key_Home, {}, false, u"xy", {2, 1}}};
    for (const auto& test : cases) {
        SCOPED_TRACE(std::to_string(test.open) + " " + std::to_string(test.key));
        m_grid->GetCell(2, 1)->SetText(old.toString());
        m_grid->SetFocusCell({2, 1});
        Press(test.open);
        ASSERT_TRUE(m_grid->IsEditing());
        Press(Qt::Key_Y); // over the selected text, or behind the character
        EXPECT_EQ(Take(), "edit 2/1");
        Press(test.key, test.modifiers);
        EXPECT_EQ(m_grid->IsEditing(), !test.ends);
        EXPECT_EQ(test.ends ? Text() : Editor()->text(), test.text);
        if (!test.ends)
            Press(Qt::Key_Escape);
        const bool moved = test.focus != CCellID{2, 1};
        EXPECT_EQ(Take(), "edited 2/1" + (moved ? ", " + Selecting(test.focus) : ""));
        EXPECT_EQ(m_changed, Text() != old);
        EXPECT_EQ(m_grid->GetCell(2, 1)->IsModified(), m_changed);
        EXPECT_EQ(m_grid->GetFocusCell(), test.focus);
        EXPECT_TRUE(m_grid->hasFocus());
        m_grid->SetItemState(2, 1, 0);
    }
}

TEST_F(GridEdit, WhateverElseEndsTheEditKeepsTheText) {
    const CCellID other{6, 2};
    const std::function<void()> ends[] = {[&] { Editor()->clearFocus(); },
                                          [&] { Click(other); },
                                          [&] { Click(other, Qt::NoModifier, Qt::RightButton); },
                                          [&] { m_grid->verticalScrollBar()->setValue(2000); },
                                          [&] { m_grid->SetColumnWidth(1, 0); },
                                          [&] { m_grid->SortItems(nullptr, 0, true); },
                                          [&] { m_grid->OnEditCell(other); },
                                          [&] { m_grid->hide(); },
                                          [&] { m_grid->DeleteAllItems(); }};
    QString text;
    m_onNote = [&](const GridNotification& note) {
        if (note.code == GVN_ENDLABELEDIT && note.changed)
            text = TextAt(*m_grid, note.row, note.col);
    };
    for (const auto& end : ends) {
        Renew();
        m_grid->SetEditable(true);
        m_grid->SetFocusCell({2, 1});
        Press(Qt::Key_F2);
        Press(Qt::Key_N);
        text.clear();
        end();
        EXPECT_EQ(text, "n");
    }
}

/// To the field's own menu, to another window and back, on with the Tab key.
TEST_F(GridEdit, WhereTheFocusGoesWithAndAfterAnEdit) {
    QWidget window;
    QLineEdit before(&window);
    m_grid->setParent(&window);
    m_grid->show();
    QLineEdit behind(&window);
    window.show();
    window.activateWindow();
    m_grid->setFocus();
    Press(Qt::Key_F2);
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(Editor(), &menu);
    EXPECT_TRUE(m_grid->IsEditing());
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    EXPECT_FALSE(m_grid->IsEditing());
    window.activateWindow();
    QApplication::processEvents();
    EXPECT_TRUE(m_grid->hasFocus());
    Press(Qt::Key_F2);
    Press(Qt::Key_Tab); // not the grid's own: what is typed next may not go into it
    EXPECT_TRUE(behind.hasFocus());
    m_grid->setFocus();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Y, {}, "y", true);
    QApplication::sendEvent(&*m_grid, &held);
    EXPECT_FALSE(m_grid->IsEditing()) << "it answered a question, and is still held";
    m_grid->setParent(nullptr);
}
