#pragma once

#include "grid/IGridWatcher.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QList>
#include <QTimer>

#include <optional>

class CGridCtrl;
class CGridAccessibleCell;

/// The grid as a screen reader sees it: a table whose rows are those below the header.
///
/// Children are all cells, row by row, the header's among them: child row * columns + column. Each
/// is made when it is asked for and answers from then on, until the table is built anew or sorted,
/// its type is set, its row goes, or the grid does. A title that is drawn over its whole row is one
/// cell, which answers for every column; its own number is that of column 0.
///
/// Selecting here adds to the selection and tells the grid's owner as a key press does. In list
/// mode rows are selected, never columns.
///
/// Changes are gathered and told once the grid has come to rest, from the event loop: filling the
/// grid is one change, and without a screen reader there is none. Of single cells, those in sight
/// are told that have been asked for.
///
/// Thread: interface thread. Owner: Qt's table of interfaces; the grid knows it while it lives, and
///         takes it along at its own end.
class CGridAccessible final : public QAccessibleWidget,
                              public QAccessibleTableInterface,
                              public IGridWatcher {
public:
    /// Lets Qt find this class for grids. Once is enough, more do no harm.
    static void Install();

    // --- IGridWatcher

    void OnTableChanges() override;
    void OnRowsShifted(GridRowShift shift) override;
    void OnCellReplaced(CCellID cell) override;
    void OnRowsReplaced(int first, int count) override;
    void OnSelectionChanged() override;
    void OnFocusMoved() override;
    void OnCellsRedrawn() override;
    /// Deletes this.
    void OnGridGoes() override;

    /// How many cells have been asked for.
    [[nodiscard]] qsizetype CountKnownCells() const { return m_cells.size(); }

    // --- QAccessibleInterface

    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // --- QAccessibleTableInterface

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] int columnCount() const override;
    [[nodiscard]] QString columnDescription(int column) const override;
    [[nodiscard]] QString rowDescription(int) const override { return {}; }

    // What is selected is counted once after each change.
    [[nodiscard]] int selectedCellCount() const override;
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override;
    [[nodiscard]] int selectedRowCount() const override;
    [[nodiscard]] QList<int> selectedRows() const override;
    [[nodiscard]] bool isRowSelected(int row) const override;
    [[nodiscard]] int selectedColumnCount() const override;
    [[nodiscard]] QList<int> selectedColumns() const override;
    [[nodiscard]] bool isColumnSelected(int column) const override;
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int column) override;

    void modelChange(QAccessibleTableModelChangeEvent*) override {} // the grid has told before

private:
    struct Selection {
        QList<CCellID> cells; ///< in order; a title as its last cell
        QList<int> rows;      ///< of the table, in order
    };
    enum Change : unsigned {
        TableChange = 1,
        SelectionChange = 2,
        FocusChange = 4,
        CellChange = 8,
        RowChange = 16
    };

    explicit CGridAccessible(CGridCtrl& grid);
    ~CGridAccessible() override; // by Qt's table of interfaces

    static QAccessibleInterface* Make(const QString& className, QObject* object);

    [[nodiscard]] CGridCtrl& Grid() const;
    /// Null outside the grid. `cell` counts the header, too.
    [[nodiscard]] CGridAccessibleCell* CellFor(CCellID cell) const;
    [[nodiscard]] int GridRow(int row) const;
    [[nodiscard]] qint64 NumberOf(CCellID cell) const;
    [[nodiscard]] const Selection& GetSelection() const;
    bool SelectRow(int row, bool selected);
    bool SelectColumn(int column, bool selected);
    void Drop(CCellID cell);
    void DropAll();
    void DropRows(int first, int count);
    void Announce(Change change);
    void Tell();
    void TellCells();

    mutable QHash<qint64, QAccessible::Id> m_cells; ///< by their number
    mutable std::optional<Selection> m_selection;   ///< none: to be counted
    unsigned m_changes = 0;                         ///< still to be told
    QList<GridRowShift> m_shifts;                   ///< still to be told
    QTimer m_announcing;
};
