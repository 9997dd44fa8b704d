#pragma once

#include <QColor>
#include <QPainter>
#include <QRect>
#include <QTransform>

#include <algorithm>

/// The device pixels under a painter. Lengths in logical pixels would come out now wider, now
/// narrower where one of them is not a whole number of device pixels.
class CDevicePixels {
public:
    explicit CDevicePixels(QPainter& painter)
        : m_painter(painter)
        , m_toDevice(painter.deviceTransform())
        , m_toLogical(m_toDevice.inverted()) {}

    /// The device pixels that QPainter::fillRect fills.
    [[nodiscard]] QRect Of(const QRect& rect) const {
        const QRectF exact = m_toDevice.mapRect(QRectF(rect)); // its toRect rounds the size alone
        const QPoint end(qRound(exact.right()), qRound(exact.bottom()));
        return QRect(QPoint(qRound(exact.left()), qRound(exact.top())), end - QPoint(1, 1));
    }

    /// The device pixel next to a place.
    [[nodiscard]] QPoint At(QPointF place) const { return m_toDevice.map(place).toPoint(); }

    /// Device pixels for a length, the same at every place.
    [[nodiscard]] int Length(int logical) const {
        return std::max(1, qRound(logical * m_toDevice.m11()));
    }

    [[nodiscard]] QPointF ToLogical(QPoint device) const {
        return m_toLogical.map(QPointF(device));
    }

    void Fill(const QRect& device, const QColor& colour) const {
        m_painter.fillRect(m_toLogical.mapRect(QRectF(device)), colour);
    }

private:
    QPainter& m_painter;
    QTransform m_toDevice;
    QTransform m_toLogical;
};
