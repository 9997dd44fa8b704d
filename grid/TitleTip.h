#pragma once

#include <QWidget>

/// A small plain window over a cell, with the whole of a text that the cell has no room for.
///
/// It lies in the viewport, and the mouse does not see it. Interface thread only.
class ZTitleTip final : public QWidget {
public:
    explicit ZTitleTip(QWidget* viewport);

    /// Shows `text` from the cell's text place on, in the viewport's pixels, over as many lines as
    /// it takes; the room left and right of it is `margin`.
    void Show(const QRect& place, int margin, const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_strText;
    int m_nMargin = 0;
};
