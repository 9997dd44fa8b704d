#pragma once

#include <QPainter>
#include <QPointF>

/// The program's mark: tracks of a deck, of which the one in hand goes into a phone. It fills a
/// square of 24 units about `middle`; `unit` and the stroke are in pixels.
void DrawEmblem(QPainter& painter, QPointF middle, qreal unit, qreal stroke);
