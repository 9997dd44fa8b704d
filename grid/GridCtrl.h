#pragma once

#include "grid/GridAxis.h"
#include "grid/GridDefaultCell.h"
#include "grid/GridGeometry.h"
#include "grid/GridLook.h"
#include "grid/GridMouse.h"
#include "grid/GridSelection.h"
#include "grid/GridSizing.h"
#include "grid/GridTypes.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

#include <memory>
#include <vector>

class CInPlaceEdit;
class IGridWatcher;
class ZTitleTip;

/// A table of cells under fixed header rows, with scrolling, selection and sorting.
///
/// Thread:   the interface thread only.
/// Owner:    the grid owns its cells. A pointer to a cell holds until its row goes or its type is
///           set; a pointer to a default cell as long as the grid.
/// Answers:  operations on cells return 1 when done and 0 for indexes out of range, with no effect.
/// Repaint:  what changes the table, the selection or the focus repaints by itself; after other
///           changes of single cells the caller asks for it (RedrawCell, RedrawRow, Refresh).
/// Cost:     the cells of a row are made when one of them is needed for the first time. Painting
///           touches the cells to be repainted only; a lookup by position is O(log rows).
/// Notices:  clicks and changes of the selection go to the notify handler, which may rebuild the
///           grid on the spot, but not delete it.
class CGridCtrl : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit CGridCtrl(QWidget* parent = nullptr, int rows = 0, int cols = 0, int fixedRows = 0,
                       int fixedCols = 0);
    ~CGridCtrl() override;

    // --- rows and columns. Each of these drops selection and focus; cells that remain keep their
    //     content. 0 on a bad count, or with the grid emptied when memory ran out.

    /// Empties the grid; grid lines, flags and default cells stay.
    int DeleteAllItems();
    int SetRowCount(int rows);
    int SetColumnCount(int cols);
    int SetFixedRowCount(int fixedRows);
    int SetFixedColumnCount(int fixedCols);
    [[nodiscard]] int GetRowCount() const { return m_nRows; }
    [[nodiscard]] int GetColumnCount() const { return m_nCols; }
    [[nodiscard]] int GetFixedRowCount() const { return m_nFixedRows; }
    [[nodiscard]] int GetFixedColumnCount() const { return m_nFixedCols; }

    // --- rows that come and go below the header. What is in sight stays where it is; selection,
    //     focus, an open edit and what the mouse does go with their rows. False, with no effect,
    //     for rows that are not there, or with the grid emptied when memory ran out.

    /// New rows come before row `first`, or behind all.
    bool InsertRows(int first, int count);
    /// An edit in one of the rows ends without its text.
    bool DeleteRows(int first, int count);
    /// The cells of as many rows are made anew, and filled, when they are needed. Selection and
    /// focus stay in their places.
    bool RenewRows(int first, int count);

    // --- cells

    /// `filler` is called for each row whose cells are needed for the first time, also while the
    /// grid is painted. It may write and replace the cells of that row, and nothing else.
    void SetRowFiller(GridRowFiller filler) { m_pfnFill = std::move(filler); }
    /// Whether the cells of a row have been needed yet; false outside the grid.
    [[nodiscard]] bool HasCells(int row) const;
    [[nodiscard]] bool IsValid(CCellID cell) const;
    /// Replaces a cell by a new one of a class, such as RuntimeClass<CGridCellBar>.
    int SetCellType(int row, int col, GridCellClass cellClass);
    /// Null outside the grid.
    [[nodiscard]] CGridCellBase* GetCell(int row, int col) const;
    [[nodiscard]] CGridDefaultCell* GetDefaultCell(bool fixedRow, bool fixedCol);
    int SetItem(const GridItem& item);
    /// Fills the fields that `item.mask` names with what the cell shows, defaults included.
    int GetItem(GridItem& item) const;
    /// Sets the state bits but for the grid's own: fixed, fixed row, fixed column and focused.
    int SetItemState(int row, int col, quint32 state);
    /// 0 outside the grid.
    [[nodiscard]] quint32 GetItemState(int row, int col) const;

    // --- selection and focus

    /// Selects a range of cells, the header's left out, in place of the old selection.
    /// `selectCells` false selects none. `forceRedraw` paints at once.
    void SetSelectedRange(int minRow, int minCol, int maxRow, int maxCol, bool forceRedraw = false,
                          bool selectCells = true);
    [[nodiscard]] int GetSelectedCount() const { return m_selection.GetCount(); }
    /// Row by row.
    [[nodiscard]] std::vector<CCellID> GetSelectedCells() const { return m_selection.GetCells(); }
    [[nodiscard]] bool IsSelected(CCellID cell) const { return m_selection.Contains(cell); }
    /// The rows with selected cells, in order.
    [[nodiscard]] std::vector<int> GetSelectedRows() const { return m_selection.GetRows(); }
    /// Selects all cells of rows below the header, or deselects them, besides the others.
    void SelectRow(int row, bool selected);
    /// Selects, or deselects, the cells from `first` to `last` besides the others, and tells the
    /// owner as for a click. False where they are not there, or nothing can be selected.
    bool SelectBesides(CCellID first, CCellID last, bool selected);
    [[nodiscard]] CCellID GetFocusCell() const { return m_idCurrentCell; }
    /// An invalid cell takes the focus away.
    void SetFocusCell(CCellID cell);

    // --- sorting

    /// Used by SortItems where none is given; null compares texts without regard to case.
    void SetCompareFunction(GridCompare compare) { m_pfnCompare = compare; }
    /// Sorts the rows low to high, by default all below the header, and keeps the order of equal
    /// ones. Drops selection and focus.
    int SortItems(GridCompare compare, int col, bool ascending, qintptr data = 0, int low = -1,
                  int high = -1);
    [[nodiscard]] int GetSortColumn() const { return m_look.m_nSortColumn; }
    /// Marks a column as the one that the rows are sorted by, none for -1; moves no row.
    void SetSortColumn(int col, bool ascending);
    [[nodiscard]] bool IsSortAscending() const { return m_look.m_bAscending; }

    // --- sizes, in pixels; 0 hides. The last column is painted up to the window's edge whatever
    //     its width.

    int SetColumnWidth(int col, int width);
    int SetRowHeight(int row, int height);
    [[nodiscard]] int GetColumnWidth(int col) const;
    [[nodiscard]] int GetRowHeight(int row) const;
    /// Makes a column exactly as wide as its widest cell needs (CGridCellBase::GetCellExtent), the
    /// sort arrow counted in.
    int AutoSizeColumn(int col, GridFit fit = GridFit::All);
    void AutoSizeColumns(GridFit fit = GridFit::All);
    /// Widens columns to what as many rows need, but for those whose width is not the one that
    /// they were fitted to.
    void FitToRows(int first, int count);
    /// Fits the columns again to all rows, but for those whose width is not the one that they were
    /// fitted to. In a large grid this goes on from the event loop, in steps of a few milliseconds.
    void RefitColumns();
    int AutoSizeRow(int row);
    void AutoSize();

    // --- look and behaviour

    void SetGridBkColor(COLORREF colour);
    void SetGridLineColor(COLORREF colour);
    /// The images that cells name by number, each drawn at `size`.
    void SetImageList(const QList<QIcon>& images, QSize size = QSize(16, 16));
    /// One of GridLines.
    void SetGridLines(int mode);
    /// In list mode whole rows are selected.
    void SetListMode(bool on);
    [[nodiscard]] bool IsListMode() const { return m_bListMode; }
    void EnableSelection(bool on) { m_bEnableSelection = on; }
    [[nodiscard]] bool IsSelectionEnabled() const { return m_bEnableSelection; }
    /// Whether a click in the header selects the column under it.
    void SetFixedColumnSelection(bool on) { m_bFixedColumnSelection = on; }
    /// Whether a click in a fixed column selects its row.
    void SetFixedRowSelection(bool on) { m_bFixedRowSelection = on; }
    /// Whether cells may be edited in place, each of them if the owner allows it when asked.
    void SetEditable(bool on) { m_bEditable = on; }
    /// Whether a column may be drawn down to width 0 with the mouse.
    void SetAllowColHide(bool on) { m_sizing.m_bAllowColHide = on; }
    void SetColumnResize(bool on) { m_sizing.m_bResizeColumns = on; }
    void SetRowResize(bool on) { m_sizing.m_bResizeRows = on; }
    /// Whether Tab moves from cell to cell, not to the next control.
    void SetHandleTabKey(bool on) { m_bHandleTabKey = on; }
    /// Whether the texts of selected cells may be dragged out of the grid.
    void EnableDragAndDrop(bool on) { m_bAllowDragAndDrop = on; }
    /// Whether a text that does not fit its cell is shown over it when the mouse rests there.
    void EnableTitleTips(bool on) { m_bTitleTips = on; }
    void SetNotifyHandler(GridNotifyHandler handler) { m_pfnNotify = std::move(handler); }
    [[nodiscard]] const GridLook& GetLook() const { return m_look; }
    /// Takes what changes; null for none.
    void SetWatcher(IGridWatcher* watcher) { m_pWatcher = watcher; }

    // --- on screen; points and rectangles in pixels of the viewport

    void Refresh();
    void RedrawCell(int row, int col);
    void RedrawRow(int row);
    /// Scrolls as little as shows the whole cell, or its start.
    void EnsureVisible(int row, int col);
    /// Where cells lie now.
    [[nodiscard]] GridGeometry GetGeometry() const;
    /// Where a cell is drawn, also where that is out of sight.
    [[nodiscard]] QRect GetCellRect(CCellID cell) const { return GetGeometry().CellRect(cell); }
    /// The cell at a point; none beside all cells, or in a header unless `fixedToo`.
    [[nodiscard]] CCellID GetCellFromPt(QPoint point, bool fixedToo) const {
        return GetGeometry().CellAt(point, fixedToo);
    }
    [[nodiscard]] GridMouseMode GetMouseMode() const { return m_mouse.m_MouseMode; }

    // --- editing in place

    /// Whether the cell could be edited, the owner willing: it is there, not fixed, not read-only,
    /// and has a text.
    [[nodiscard]] bool IsEditable(CCellID cell) const;
    /// Opens the text field over a cell: false if it is not editable, or hidden, or the owner
    /// refuses.
    bool OnEditCell(CCellID cell);
    /// Ends the edit, if there is one, with the text that it has come to.
    void EndEdit();
    [[nodiscard]] bool IsEditing() const { return m_pEditWnd != nullptr; }

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    using Cell = std::unique_ptr<CGridCellBase>;
    using Row = std::vector<Cell>;

    // GridCtrl.cpp
    void OnDefaultsChanged();
    [[nodiscard]] const Row& CellsOf(int row) const;
    void FillRow(int row) const;
    [[nodiscard]] Cell MakeCell(GridCellClass cellClass, int row, int col) const;
    [[nodiscard]] quint32 FixedBits(int row, int col) const;
    void MarkFixedCells(int rows, int cols);
    void SortRows(GridCompare compare, int col, qintptr data, int low, int high);

    // GridCtrlRows.cpp
    int Rebuild(int rows, int cols);
    void DropMarks();
    void ShiftRows(GridRowShift shift, int scroll);

    // GridCtrlSelection.cpp
    void Select(const QRect& range, bool keepOthers);
    void SelectCell(CCellID cell, bool selected);
    QRect Mark(const QRegion& changed, bool selected) const;
    void SetStateBit(CCellID cell, quint32 bit, bool on) const;
    void SelectTo(CCellID cell);
    void SelectByInput(const QRect& range);
    [[nodiscard]] QRect BodyCells() const;

    // GridCtrlLayout.cpp
    [[nodiscard]] GridSpan RowsToFit(GridFit fit) const;
    void FitColumns(GridSpan cols, GridFit fit);
    [[nodiscard]] std::vector<int> WidthsNeeded(GridSpan rows, GridSpan cols);
    void RefitStep();
    void FitRow(int row);
    void ResetScrollBars();
    void RelayOut();

    // GridCtrlPaint.cpp
    void UpdateRows(const QRect& range);
    void DrawArea(QPainter& painter, const GridGeometry& geometry, const QRect& area) const;
    void DrawCells(QPainter& painter, const GridGeometry& geometry, GridSpan rows,
                   GridSpan cols) const;
    void FillCells(QPainter& painter, const GridGeometry& geometry, int row,
                   const std::vector<int>& columns) const;
    void DrawLines(QPainter& painter, const GridGeometry& geometry, GridSpan rows,
                   GridSpan cols) const;

    // GridCtrlMouse.cpp
    /// Tells the owner, and returns the notification as the owner has left it.
    GridNotification Notify(GridNotification notification) const;
    GridNotification Notify(int code, CCellID cell) const;
    void PressAt(QPoint point, bool extend);
    void StartSelection(CCellID cell);
    void OnFixedRowClick(CCellID cell);
    void OnFixedColumnClick(CCellID cell);
    void Hover(QPoint point);
    void MoveSizing(QPoint point);
    void EndSizing(QPoint point);
    void DoubleClickAt(QPoint point);
    void Click(CCellID cell, QPoint point);
    void ReleaseDrag(CCellID cell, QPoint point);
    void StartDrag();
    void Interrupt();
    void LetGo();
    void ScrollSelection();
    void ShowTitleTip(QPoint point);
    void HideTitleTip();

    // GridCtrlKeys.cpp
    [[nodiscard]] CCellID NextCell(int key, Qt::KeyboardModifiers modifiers) const;
    [[nodiscard]] int PageAway(int row, int step) const;
    void FocusFirstSeenCell();
    bool MoveByKey(int key, Qt::KeyboardModifiers modifiers);
    void MoveTo(CCellID cell, bool extend);
    void Scroll(QScrollBar& bar, int pixels, int angle, int& rest);
    [[nodiscard]] QString SelectedText() const;
    void OnEditCopy();

    // GridCtrlEdit.cpp
    [[nodiscard]] bool IsInText(CCellID cell, QPoint point) const;
    [[nodiscard]] QRect EditPlace(CCellID cell) const;
    CInPlaceEdit* OpenEdit(CCellID cell);
    void EditAt(CCellID cell, QPoint point);
    void EditWith(CCellID cell, const QString& character);
    void OnEditEnded(int key, Qt::KeyboardModifiers modifiers);
    void FinishEdit(bool store);
    void PlaceEdit();

    int m_nRows = 0;
    int m_nFixedRows = 0;
    int m_nCols = 0;
    int m_nFixedCols = 0;
    int m_nDefaultRowHeight = 0;
    CGridAxis m_arRowHeights;
    CGridAxis m_arColWidths;
    std::vector<int> m_arFittedWidths; ///< of the columns, as the last fit left them; 0: not fitted
    mutable std::vector<Row> m_rows;   ///< a row is empty until its cells are needed
    mutable int m_iFilledRow = -1;     ///< the row that the filler is at
    GridRowFiller m_pfnFill;

    GridCompare m_pfnCompare = nullptr;

    CCellID m_idCurrentCell;
    CCellID m_SelectionStartCell;
    CGridSelection m_selection; ///< the cells that are made bear it as a state bit, too

    GridMouse m_mouse;
    CGridSizing m_sizing;
    QBasicTimer m_scrollTimer;
    QBasicTimer m_refitTimer;
    int m_iRefitRow = 0;              ///< the next row that RefitColumns() looks at
    std::vector<int> m_arRefitWidths; ///< what the rows before it need
    int m_nTimerInterval = 25;        ///< of the scrolling at the edges, in milliseconds
    int m_nWheelRestX = 0;            ///< what the wheel has turned but not scrolled
    int m_nWheelRestY = 0;
    ZTitleTip* m_pTitleTip = nullptr;
    CInPlaceEdit* m_pEditWnd = nullptr; ///< there while a cell is edited

    bool m_bListMode = false;
    bool m_bEnableSelection = true;
    bool m_bFixedRowSelection = true;
    bool m_bFixedColumnSelection = true;
    bool m_bEditable = false;
    bool m_bHandleTabKey = false;
    bool m_bAllowDragAndDrop = false;
    bool m_bTitleTips = true;
    GridLook m_look;
    CGridDefaultCell m_cellDefault;
    CGridDefaultCell m_cellFixedRowDef;
    CGridDefaultCell m_cellFixedColDef;
    CGridDefaultCell m_cellFixedRowColDef;
    GridNotifyHandler m_pfnNotify;
    IGridWatcher* m_pWatcher = nullptr;
};
