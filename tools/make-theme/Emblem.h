#pragma once

#include <QPainter>
#include <QPointF>

/// The program's mark: tracks of a deck, of which the one in hand goes into a phone. It fills a
/// square of 24 units about `middle`. Unit and stroke are in pixels; where the stroke is a whole
/// number of them, lines are put on pixels.
void DrawEmblem(QPainter& painter, QPointF middle, qreal unit, qreal stroke);
