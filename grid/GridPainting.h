#pragma once

#include <QColor>
#include <QRect>

class QIcon;
class QPainter;

/// The shapes that cells are drawn from. Arguments are logical pixels; at any scale a shape begins
/// and ends with a device pixel, and a line has the same number of them at every place.
namespace GridPainting {

/// Fills a rectangle with one line per device pixel row: from row t to row b (not included) each
/// channel of row y is the colour's times sin((y - t) / (b - t) * 3.1415926 - 0.3) * 0.2 + 0.8,
/// truncated.
void FillShaded(QPainter& painter, const QRect& rect, const QColor& colour);

/// A line of one pixel along an edge of `rect`, on the inside.
void DrawLine(QPainter& painter, const QRect& rect, Qt::Edge edge, const QColor& colour);

/// Lines along all edges, on the inside: raised, or sunken when `top` is the dark colour.
void DrawEdge(QPainter& painter, const QRect& rect, const QColor& top, const QColor& bottom);

/// What the marks of a header cell take at its right edge.
inline constexpr int kHeaderMarksRoom = 4;

/// The mark between two header cells: two vertical ticks at the right edge, darker than the
/// background.
void DrawHeaderMarks(QPainter& painter, const QRect& rect, const QColor& background);

/// The width of a sort arrow of a height, with the gap before it.
[[nodiscard]] int SortArrowRoom(int height);

/// Draws the sort arrow at the right end of `rect`, as high as `lineHeight` where that fits, and
/// returns what is left of the rectangle.
[[nodiscard]] QRect DrawSortArrow(QPainter& painter, const QRect& rect, int lineHeight,
                                  bool ascending, const QColor& light, const QColor& shadow);

/// A check box that fills the square `rect`: outlined and ticked in `ink`.
void DrawCheckBox(QPainter& painter, const QRect& rect, bool checked, const QColor& ink);

/// An image that fills `rect`.
void DrawImage(QPainter& painter, const QRect& rect, const QIcon& image);

} // namespace GridPainting
