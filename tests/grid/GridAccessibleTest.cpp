#include "accessible/GridAccessible.h"

#include "grid/GridCellCheck.h"
#include "tests/grid/GridInputFixture.h"

#include <QAccessible>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

QAccessibleInterface* TableOf(const std::unique_ptr<CGridCtrl>& grid) {
    return QAccessible::queryAccessibleInterface(grid.get());
}

QAccessibleInterface* CellOf(const std::unique_ptr<CGridCtrl>& grid, int row, int col) {
    return TableOf(grid)->tableInterface()->cellAt(row, col);
}

qsizetype KnownCells(const std::unique_ptr<CGridCtrl>& grid) {
    return static_cast<CGridAccessible*>(TableOf(grid))->CountKnownCells();
}

CGridCellCheck* MakeCheck(CGridCtrl& grid, int row, int col) {
    grid.SetCellType(row, col, RuntimeClass<CGridCellCheck>);
    return static_cast<CGridCellCheck*>(grid.GetCell(row, col));
}

TEST(GridAccessibleTest, IsATableOfTheRowsBelowTheHeader) {
    const auto grid = MakeGrid(5, 3);
    Show(*grid, 300, 300);
    auto* table = TableOf(grid);
    auto* cells = table->tableInterface();
    EXPECT_EQ(KnownCells(grid), 0); // until they are asked for
    EXPECT_EQ(table->role(), QAccessible::Table);
    EXPECT_EQ(cells->rowCount(), 4);
    EXPECT_EQ(cells->columnCount(), 3);
    EXPECT_EQ(cells->columnDescription(2), "0/2");
    EXPECT_EQ(table->childCount(), 15);
    for (int i = 0; i < 15; ++i) {
        const int row = i / 3 - 1;
        auto* cell = table->child(i);
        EXPECT_EQ(cell->text(QAccessible::Name), QStringLiteral("%1/%2").arg(i / 3).arg(i % 3));
        EXPECT_EQ(cell->role(), row < 0 ? QAccessible::ColumnHeader : QAccessible::Cell);
        EXPECT_EQ(cell->tableCellInterface()->rowIndex(), row);
        EXPECT_EQ(cell->tableCellInterface()->columnIndex(), i % 3);
        EXPECT_EQ(cell->tableCellInterface()->columnExtent(), 1);
        EXPECT_EQ(cell->parent(), table);
        EXPECT_EQ(table->indexOfChild(cell), i);
        EXPECT_EQ(table->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
        if (row < 0)
            continue;
        EXPECT_EQ(cells->cellAt(row, i % 3), cell);
        EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells(), QList{table->child(i % 3)});
        EXPECT_TRUE(cell->tableCellInterface()->rowHeaderCells().isEmpty());
    }
    EXPECT_EQ(cells->cellAt(0, 0)->rect().topLeft(),
              grid->viewport()->mapToGlobal(grid->GetCellRect({1, 0}).topLeft()));
    for (const CCellID id : {CCellID{-1, 0}, {0, -1}, {4, 0}, {0, 3}, {0x7FFFFFFF, 0}})
        EXPECT_EQ(cells->cellAt(id.row, id.col), nullptr);
    EXPECT_FALSE(table->child(-1) || table->child(15) || table->childAt(150, 290));
    auto* viewport = QAccessible::queryAccessibleInterface(grid->viewport());
    EXPECT_EQ(table->indexOfChild(viewport), -1);
    EXPECT_EQ(table->indexOfChild(CellOf(MakeGrid(2, 1), 0, 0)), -1);
}

TEST(GridAccessibleTest, AnEmptyGridIsAnEmptyTable) {
    const auto grid = MakeGrid(0, 0);
    Show(*grid, 100, 100);
    auto* table = TableOf(grid);
    auto* cells = table->tableInterface();
    EXPECT_EQ(table->childCount() + cells->rowCount() + cells->columnCount(), 0);
    EXPECT_FALSE(table->child(0) || table->childAt(50, 50) || cells->cellAt(0, 0));
    EXPECT_TRUE(cells->columnDescription(0).isEmpty() && cells->selectedColumns().isEmpty());
    EXPECT_FALSE(cells->selectRow(0) || cells->isRowSelected(0));
}

TEST(GridAccessibleTest, StatesFollowTheGrid) {
    const auto grid = MakeGrid(40, 4);
    Show(*grid, 300, 200);
    MakeCheck(*grid, 1, 0)->SetCheck(true);
    MakeCheck(*grid, 2, 0);
    grid->SetEditable(true);
    grid->SetItemState(2, 2, GridState::ReadOnly);
    grid->SetRowHeight(3, 0);
    grid->SetColumnWidth(1, 0);
    grid->SetSelectedRange(2, 0, 2, 3);
    grid->SetFocusCell({2, 2});
    grid->activateWindow();
    grid->setFocus();

    const auto state = [&](int row, int col) { return CellOf(grid, row, col)->state(); };
    EXPECT_TRUE(state(0, 0).checkable && state(0, 0).checked);
    EXPECT_TRUE(state(1, 0).checkable && !state(1, 0).checked);
    EXPECT_FALSE(state(0, 0).editable || state(0, 2).checkable);
    EXPECT_EQ(CellOf(grid, 0, 0)->text(QAccessible::Name), QString());
    EXPECT_TRUE(state(0, 2).editable && !state(0, 2).readOnly);
    EXPECT_TRUE(state(1, 2).readOnly && !state(1, 2).editable);
    EXPECT_TRUE(state(1, 2).selected && state(1, 2).selectable && !state(0, 2).selected);
    EXPECT_TRUE(state(1, 2).focusable && state(1, 2).focused && !state(1, 3).focused);
    EXPECT_EQ(TableOf(grid)->focusChild(), CellOf(grid, 1, 2));
    EXPECT_TRUE(state(2, 0).invisible && state(0, 1).invisible && !state(0, 0).invisible);
    EXPECT_FALSE(state(2, 0).offscreen);
    EXPECT_TRUE(state(30, 0).offscreen && !state(30, 0).invisible && !state(0, 0).offscreen);
    const auto header = TableOf(grid)->child(2)->state();
    EXPECT_FALSE(header.selectable || header.focusable || header.editable || header.offscreen);
    EXPECT_TRUE(TableOf(grid)->state().multiSelectable);

    grid->verticalScrollBar()->setValue(10'000);
    EXPECT_TRUE(state(0, 0).offscreen && !state(38, 0).offscreen); // behind the header
    grid->clearFocus();
    EXPECT_TRUE(state(1, 2).active && !state(1, 2).focused);
    EXPECT_EQ(TableOf(grid)->focusChild(), nullptr);
    grid->hide();
    EXPECT_TRUE(state(0, 0).invisible);
}

TEST(GridAccessibleTest, ATitleIsOneCellOfItsWholeRow) {
    const auto grid = MakeGrid(5, 4);
    MakeTitle(*grid, 2);
    Show(*grid, 250, 200);
    auto* table = TableOf(grid);
    auto* title = CellOf(grid, 1, 0);
    for (int col = 0; col < 4; ++col) {
        EXPECT_EQ(CellOf(grid, 1, col), title);
        EXPECT_EQ(table->child(8 + col), title);
    }
    EXPECT_EQ(KnownCells(grid), 1);
    EXPECT_EQ(title->text(QAccessible::Name), "Title");
    EXPECT_EQ(title->tableCellInterface()->rowIndex(), 1);
    EXPECT_EQ(title->tableCellInterface()->columnIndex(), 0);
    EXPECT_EQ(title->tableCellInterface()->columnExtent(), 4);
    EXPECT_TRUE(title->tableCellInterface()->columnHeaderCells().isEmpty());
    EXPECT_EQ(table->indexOfChild(title), 8);
    const QPoint start = grid->viewport()->mapToGlobal(grid->GetCellRect({2, 0}).topLeft());
    EXPECT_EQ(title->rect(), QRect(start, QSize(250, grid->GetRowHeight(2))));
    EXPECT_EQ(table->childAt(title->rect().left() + 1, title->rect().center().y()), title);
    grid->SetColumnWidth(3, 0); // hides no title
    EXPECT_FALSE(title->state().invisible);

    grid->SetSelectedRange(2, 0, 2, 3);
    EXPECT_TRUE(title->state().selected);
    EXPECT_EQ(table->tableInterface()->selectedCells(), QList{title});
    EXPECT_EQ(table->tableInterface()->selectedRows(), QList{1});
    grid->setFocus();
    grid->SetFocusCell({2, 1});
    EXPECT_TRUE(title->state().focused);

    const auto id = QAccessible::uniqueId(title);
    grid->SetCellType(2, 3, RuntimeClass<CGridCell>); // no longer a title
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    const auto part = QAccessible::uniqueId(CellOf(grid, 1, 1));
    MakeTitle(*grid, 2);
    EXPECT_EQ(QAccessible::accessibleInterface(part), nullptr);
}

TEST_F(GridInput, AScreenReaderSelectsRowsAndTheOwnerIsTold) {
    auto* table = TableOf(m_grid)->tableInterface();
    EXPECT_TRUE(table->selectRow(3) && table->selectRow(0));
    EXPECT_EQ(Take(), Selecting({4, 0}) + ", " + Selecting({1, 0}));
    EXPECT_EQ(table->selectedRows(), (QList{0, 3}));
    EXPECT_EQ(table->selectedRowCount(), 2);
    EXPECT_EQ(table->selectedCellCount(), 8);
    EXPECT_EQ(table->selectedCells().value(4), CellOf(m_grid, 3, 0));
    EXPECT_TRUE(table->isRowSelected(3) && !table->isRowSelected(2) && !table->isRowSelected(-1));
    EXPECT_TRUE(table->unselectRow(0));
    EXPECT_EQ(table->selectedRows(), QList{3});
    EXPECT_FALSE(table->selectRow(199) || table->selectRow(-1) || table->selectColumn(0));
    EXPECT_TRUE(table->selectedColumns().isEmpty());
    m_onNote = [this](const GridNotification&) { m_grid->DeleteAllItems(); };
    EXPECT_FALSE(table->selectRow(2));
}

TEST(GridAccessibleTest, ACellIsGoneWhenItsPlaceMeansAnother) {
    std::unique_ptr<CGridCtrl> grid;
    auto changes = Rebuilds();
    changes.push_back([](CGridCtrl& shown) { MakeCheck(shown, 2, 1); });
    changes.push_back([&](CGridCtrl&) { grid.reset(); });
    for (const auto& change : changes) {
        grid = MakeGrid(6, 3);
        const auto table = QAccessible::uniqueId(TableOf(grid));
        const auto cell = QAccessible::uniqueId(CellOf(grid, 1, 1));
        change(*grid);
        EXPECT_EQ(QAccessible::accessibleInterface(cell), nullptr);
        EXPECT_EQ(QAccessible::accessibleInterface(table) != nullptr, grid != nullptr);
    }
}

TEST(GridAccessibleTest, ForgetsWhatQtDropsItself) {
    const auto grid = MakeGrid(6, 3);
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(CellOf(grid, 1, 1)));
    const auto cell = QAccessible::uniqueId(CellOf(grid, 1, 1));
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(TableOf(grid)));
    EXPECT_EQ(QAccessible::accessibleInterface(cell), nullptr);
    EXPECT_EQ(CellOf(grid, 1, 1)->text(QAccessible::Name), "2/1");
}

struct GridAccessibleEvents : ::testing::Test {
    GridAccessibleEvents() {
        Show(*m_grid, 300, 200);
        m_grid->activateWindow();
        m_grid->setFocus();
        SetActive(true);
        s_events.clear();
        m_before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
            s_events += QString::fromLatin1(qAccessibleEventString(event->type()));
            auto* source = event->accessibleInterface();
            if (auto* cell = source ? source->tableCellInterface() : nullptr)
                s_events.back() +=
                    QStringLiteral(" %1/%2").arg(cell->rowIndex()).arg(cell->columnIndex());
            if (event->type() != QAccessible::TableModelChanged)
                return;
            const auto* change = static_cast<QAccessibleTableModelChangeEvent*>(event);
            if (change->modelChangeType() != QAccessibleTableModelChangeEvent::ModelReset)
                s_events.back() +=
                    QStringLiteral(" %1-%2").arg(change->firstRow()).arg(change->lastRow());
        });
    }
    ~GridAccessibleEvents() override {
        QAccessible::installUpdateHandler(m_before);
        SetActive(false);
    }

    /// Only the platform can tell Qt that a screen reader is there.
    static void SetActive(bool active) {
        QGuiApplicationPrivate::platform_integration->accessibility()->setActive(active);
    }
    /// Those since the last call, with the cell or the rows that they are about.
    static std::string Events() {
        QApplication::processEvents();
        return std::exchange(s_events, {}).join(u", ").toStdString();
    }

    std::unique_ptr<CGridCtrl> m_grid = MakeGrid(6, 3);
    QAccessible::UpdateHandler m_before = nullptr;
    static inline QStringList s_events;
};

TEST_F(GridAccessibleEvents, AFillIsOneChange) {
    m_grid->DeleteAllItems();
    m_grid->SetRowCount(50);
    m_grid->SetColumnCount(4);
    m_grid->SetFixedRowCount(1);
    for (int row = 1; row < 50; ++row)
        MakeCheck(*m_grid, row, 0);
    EXPECT_EQ(Events(), "TableModelChanged");
    m_grid->SortItems(nullptr, 1, true);
    EXPECT_EQ(Events(), "TableModelChanged");
    EXPECT_EQ(KnownCells(m_grid), 0);
}

TEST_F(GridAccessibleEvents, FocusAndSelectionAreTold) {
    m_grid->SetFocusCell({2, 1});
    EXPECT_EQ(Events(), "Focus 1/1");
    m_grid->SetFocusCell({3, 1});
    m_grid->SetSelectedRange(2, 0, 2, 2);
    EXPECT_EQ(Events(), "SelectionWithin, SelectionAdd 1/1, Focus 2/1");
    m_grid->SetSelectedRange(-1, -1, -1, -1);
    EXPECT_EQ(Events(), "SelectionWithin, SelectionRemove 1/1");
    m_grid->clearFocus();
    Events();
    m_grid->SetFocusCell({4, 1});
    EXPECT_EQ(Events(), "");
    m_grid->setFocus();
    EXPECT_EQ(Events(), "Focus, Focus 3/1");
    m_grid->SetFocusCell({});
    EXPECT_EQ(Events(), "Focus");
}

TEST_F(GridAccessibleEvents, TextsAndChecksAreToldWhenTheyAreRedrawn) {
    CGridCellCheck* check = MakeCheck(*m_grid, 1, 0);
    CellOf(m_grid, 0, 0);
    CellOf(m_grid, 0, 2);
    Events();
    check->SetCheck(true);
    m_grid->RedrawCell(1, 0);
    EXPECT_EQ(Events(), "StateChanged 0/0");
    m_grid->GetCell(1, 1)->SetText("nobody asked");
    m_grid->GetCell(1, 2)->SetText("asked");
    m_grid->RedrawRow(1);
    EXPECT_EQ(Events(), "NameChanged 0/2");
    m_grid->RedrawRow(1);
    EXPECT_EQ(Events(), "");
}

TEST_F(GridAccessibleEvents, RowsThatComeAndGoAreToldAndTheOthersAreKnownOn) {
    auto* above = CellOf(m_grid, 0, 1);
    auto* below = CellOf(m_grid, 4, 1);
    const auto gone = QAccessible::uniqueId(CellOf(m_grid, 2, 1));
    Events();
    m_grid->InsertRows(2, 3);
    EXPECT_EQ(CellOf(m_grid, 0, 1), above);
    EXPECT_EQ(CellOf(m_grid, 7, 1), below);
    EXPECT_EQ(below->tableCellInterface()->rowIndex(), 7);
    m_grid->SetSelectedRange(6, 0, 6, 2);
    EXPECT_EQ(Events(), "TableModelChanged 1-3, SelectionWithin, SelectionAdd 5/1");
    m_grid->DeleteRows(6, 1);
    EXPECT_EQ(QAccessible::accessibleInterface(gone), nullptr);
    EXPECT_EQ(CellOf(m_grid, 6, 1), below);
    EXPECT_EQ(TableOf(m_grid)->tableInterface()->selectedRowCount(), 0);
    EXPECT_EQ(Events(), "TableModelChanged 5-5, SelectionWithin");
    m_grid->RenewRows(7, 1);
    EXPECT_EQ(KnownCells(m_grid), 1);
}

TEST_F(GridAccessibleEvents, NothingIsToldWithoutAReaderOrAGrid) {
    SetActive(false);
    m_grid->SetRowCount(3);
    m_grid->SetSelectedRange(1, 0, 1, 2);
    SetActive(true);
    EXPECT_EQ(Events(), "");
    m_grid->SetRowCount(2);
    m_grid.reset();
    EXPECT_EQ(Events().find("TableModelChanged"), std::string::npos);
}

} // namespace
