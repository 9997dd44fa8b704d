#pragma once

#include "grid/GridTypes.h"

#include <QWidget>

/// A small plain window over a cell, with the whole of a text that the cell has no room for.
///
/// It lies in the viewport, and the mouse does not see it. Interface thread only.
class ZTitleTip final : public QWidget {
public:
    explicit ZTitleTip(QWidget* viewport);

    /// Shows `text` of a cell from its text place on, in the viewport's pixels, over as many lines
    /// as it takes; the room left and right of it is `margin`.
    void Show(CCellID cell, const QRect& place, int margin, const QString& text);

    /// The cell that it was shown over last.
    [[nodiscard]] CCellID Cell() const { return m_idCell; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CCellID m_idCell;
    QString m_strText;
    int m_nMargin = 0;
};
