#pragma once

#include "grid/GridTypes.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>

class CMeasuredFont;
struct GridLook;
class QFont;
class QPainter;

/// One cell, as the grid and its owner see it.
///
/// A cell is owned by its grid and dies with its row. Setters change the cell alone: the caller
/// has the grid repaint it (CGridCtrl::RedrawCell, Refresh). Interface thread only.
class CGridCellBase {
public:
    CGridCellBase() = default;
    CGridCellBase(const CGridCellBase&) = delete;
    CGridCellBase& operator=(const CGridCellBase&) = delete;
    virtual ~CGridCellBase() = default;

    // All cells share one pool (CGridCellPool).
    static void* operator new(size_t size);
    static void operator delete(void* cell, size_t size) noexcept;

    virtual void SetText(const QString& text) = 0;
    virtual void SetImage(int image) = 0;
    virtual void SetData(qint32 data) = 0;
    virtual void SetState(quint32 state) = 0;
    virtual void SetFormat(quint32 format) = 0;
    virtual void SetTextClr(COLORREF colour) = 0;
    virtual void SetBackClr(COLORREF colour) = 0;
    virtual void SetSelTextClr(COLORREF colour) = 0;
    virtual void SetSelBackClr(COLORREF colour) = 0;
    /// Copies the font; null means the default cell's.
    virtual void SetFont(const QFont* font) = 0;
    /// The room, in pixels, that the cell takes around its content: both sides together. Half of
    /// it is the margin on each side. (-1, -1) means the default cell's.
    virtual void SetCoords(int width, int height) = 0;
    /// The look of the grid that the cell belongs to, which outlives it.
    virtual void SetLook(const GridLook* look) = 0;

    [[nodiscard]] virtual const QString& GetText() const = 0;
    [[nodiscard]] virtual QString GetTipText() const = 0;
    [[nodiscard]] virtual int GetImage() const = 0;
    [[nodiscard]] virtual qint32 GetData() const = 0;
    [[nodiscard]] virtual quint32 GetState() const = 0;
    // What the cell leaves unset, these take from the defaults of its look.
    [[nodiscard]] virtual quint32 GetFormat() const = 0;
    [[nodiscard]] virtual COLORREF GetTextClr() const = 0;
    [[nodiscard]] virtual COLORREF GetBackClr() const = 0;
    [[nodiscard]] virtual COLORREF GetSelTextClr() const = 0;
    [[nodiscard]] virtual COLORREF GetSelBackClr() const = 0;
    [[nodiscard]] virtual const QFont& GetFont() const = 0;
    [[nodiscard]] virtual const CMeasuredFont& GetFontObject() const = 0;
    [[nodiscard]] virtual QSize GetSize() const = 0;

    [[nodiscard]] bool IsFocused() const { return GetState() & GridState::Focused; }
    [[nodiscard]] bool IsFixed() const { return GetState() & GridState::Fixed; }
    [[nodiscard]] bool IsFixedCol() const { return GetState() & GridState::FixedCol; }
    [[nodiscard]] bool IsFixedRow() const { return GetState() & GridState::FixedRow; }
    [[nodiscard]] bool IsSelected() const { return GetState() & GridState::Selected; }
    [[nodiscard]] bool IsReadOnly() const { return GetState() & GridState::ReadOnly; }
    [[nodiscard]] bool IsModified() const { return GetState() & GridState::Modified; }
    [[nodiscard]] bool IsDropHighlighted() const { return GetState() & GridState::DropHighlighted; }

    /// Draws the cell at (row, col) into `rect`; `eraseBackground` fills the rectangle of a cell
    /// that is neither selected nor focused too. Returns false where there is nothing to draw on.
    /// Leaves pen, brush and font of the painter changed.
    virtual bool Draw(QPainter& painter, int row, int col, QRect rect, bool eraseBackground) = 0;

    /// The one colour of the cell's whole rectangle, which the grid fills for a run of like cells
    /// at once before it has them drawn without erasing; none where Draw is to fill the rectangle.
    [[nodiscard]] virtual std::optional<COLORREF> GetFlatColour() const { return std::nullopt; }

    /// Width and height of `text` in the cell's font, on one line.
    [[nodiscard]] virtual QSize GetTextExtent(const QString& text) const = 0;

    /// The least size that shows the whole content: text, image and the room around them.
    [[nodiscard]] virtual QSize GetCellExtent() const = 0;

    /// Where the text stands when the cell is drawn into `cell`; empty for a cell without a text.
    [[nodiscard]] virtual QRect GetTextRect(QRect cell) const = 0;

    // What the mouse does to the cell; `point` is in the cell's own pixels.
    virtual void OnClickDown(QPoint) {}
    virtual void OnClick(QPoint) {}
    virtual void OnRClick(QPoint) {}
    virtual void OnDblClick(QPoint) {}
};
