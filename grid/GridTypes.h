#pragma once

#include <QColor>
#include <QString>

#include <functional>
#include <memory>

class CGridCellBase;

/// A colour as 0x00BBGGRR.
using COLORREF = quint32;

/// "Take the default cell's colour."
inline constexpr COLORREF CLR_DEFAULT = 0xFF000000;

[[nodiscard]] inline QColor ToQColor(COLORREF colour) {
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

[[nodiscard]] inline COLORREF ToColorRef(const QColor& colour) {
    return static_cast<COLORREF>(colour.red() | (colour.green() << 8) | (colour.blue() << 16));
}

/// Bits of a cell's state.
namespace GridState {
inline constexpr quint32 Focused = 1;
inline constexpr quint32 Selected = 2;
inline constexpr quint32 DropHighlighted = 4;
inline constexpr quint32 ReadOnly = 8;
inline constexpr quint32 Fixed = 16;
inline constexpr quint32 FixedRow = 32;
inline constexpr quint32 FixedCol = 64;
inline constexpr quint32 Modified = 128;
} // namespace GridState

/// Bits of a cell's text format. What is not named here has no effect.
inline constexpr quint32 DT_LEFT = 0x0000;
inline constexpr quint32 DT_CENTER = 0x0001;
inline constexpr quint32 DT_RIGHT = 0x0002;
inline constexpr quint32 DT_VCENTER = 0x0004;
inline constexpr quint32 DT_BOTTOM = 0x0008;
inline constexpr quint32 DT_SINGLELINE = 0x0020;
inline constexpr quint32 DT_NOPREFIX = 0x0800;
inline constexpr quint32 DT_END_ELLIPSIS = 0x8000;

/// "Take the default cell's format."
inline constexpr quint32 FORMAT_DEFAULT = 0xFFFFFFFF;

/// Which fields of a GridItem a call reads or writes.
namespace GridMask {
inline constexpr quint32 Text = 1;
inline constexpr quint32 Image = 2;
inline constexpr quint32 Data = 4;
inline constexpr quint32 State = 8;
inline constexpr quint32 BackClr = 16;
inline constexpr quint32 TextClr = 32;
inline constexpr quint32 SelBackClr = 64;
inline constexpr quint32 SelTextClr = 128;
inline constexpr quint32 Format = 256;
} // namespace GridMask

/// What callers read and write of one cell.
struct GridItem {
    int row = -1;
    int col = -1;
    quint32 mask = 0;
    quint32 state = 0;
    quint32 format = FORMAT_DEFAULT;
    int image = -1;
    COLORREF backClr = CLR_DEFAULT;
    COLORREF textClr = CLR_DEFAULT;
    COLORREF selBackClr = CLR_DEFAULT;
    COLORREF selTextClr = CLR_DEFAULT;
    qint32 data = 0;
    QString text;
};

/// The place of a cell; (-1, -1) is none.
struct CCellID {
    int row = -1;
    int col = -1;

    [[nodiscard]] bool IsValid() const { return row >= 0 && col >= 0; }
    bool operator==(const CCellID&) const = default;
};

/// Rows that come before row `first`, or, where `count` is below 0, go from row `first` on.
struct GridRowShift {
    int first;
    int count;

    /// Where a cell is afterwards; none for one that went.
    [[nodiscard]] CCellID Moved(CCellID cell) const {
        if (cell.row < first)
            return cell;
        return cell.row < first - count ? CCellID{} : CCellID{cell.row + count, cell.col};
    }
};

/// What the mouse is doing in the grid.
enum class GridMouseMode {
    Nothing = 0,
    SelectAll = 2,
    SelectRows = 3,
    SelectCells = 4,
    OverRowDivide = 6, ///< a press would size the row
    SizingRow = 7,
    OverColDivide = 8,
    SizingColumn = 9,
    PrepareEdit = 10, ///< the button is down in the focused cell: an edit begins when it goes up
    PrepareToDrag = 11,
    Dragging = 12,
};

/// What SetGridLines takes.
namespace GridLines {
inline constexpr int None = 0;
inline constexpr int Horizontal = 1;
inline constexpr int Vertical = 2;
inline constexpr int Both = 3;
inline constexpr int HeaderMarks = 4; ///< no lines, but ticks between the header's cells
} // namespace GridLines

/// Codes of the notifications to the grid's owner.
inline constexpr int NM_CLICK = -2;
inline constexpr int NM_DBLCLK = -3;
inline constexpr int NM_RCLICK = -5;
inline constexpr int GVN_SELCHANGING = -100;
inline constexpr int GVN_SELCHANGED = -101;
inline constexpr int GVN_BEGINLABELEDIT = -175;
inline constexpr int GVN_ENDLABELEDIT = -176;
/// The left button went up, with the focus on this cell. Comes by itself, after all that the
/// release led to has been told.
inline constexpr int WM_COMMAND = 0x0111;

/// What the grid tells its owner. NM_RCLICK comes with row and column -1 from beside all cells.
struct GridNotification {
    int code = 0;
    int row = -1;
    int col = -1;
    /// GVN_BEGINLABELEDIT: the owner sets it to false to refuse the edit.
    bool allowed = true;
    /// GVN_ENDLABELEDIT: whether the edit left another text in the cell than it found.
    bool changed = false;
    /// GVN_SELCHANGING, GVN_SELCHANGED: whether it was a key that moved to the cell.
    bool byKey = false;
};

using GridNotifyHandler = std::function<void(GridNotification&)>;

/// Fills the cells of a row when they are needed for the first time.
using GridRowFiller = std::function<void(int row)>;

/// Makes a cell of one class.
using GridCellClass = std::unique_ptr<CGridCellBase> (*)();

/// RuntimeClass<CGridCellCheck> is the class of check cells, as SetCellType takes it.
template <class Cell>
inline constexpr GridCellClass RuntimeClass = +[]() -> std::unique_ptr<CGridCellBase> {
    return std::make_unique<Cell>();
};

/// Compares two cells of a column: below 0, 0 or above 0. `data` is what SortItems was given.
/// Either cell may be null. It answers the same whenever it is asked.
using GridCompare = int (*)(const CGridCellBase* first, const CGridCellBase* second, qintptr data);

/// Which rows AutoSizeColumn looks at.
enum class GridFit { Header, Data, All };
