#pragma once

#include <QWidget>

/// A small plain window over a cell, with the whole of a text that the cell has no room for.
///
/// The mouse does not see it. Interface thread only.
class ZTitleTip final : public QWidget {
public:
    explicit ZTitleTip(QWidget* parent);

    /// Shows `text` on one line, beginning at `place`, in pixels of the screen; the room left of
    /// the text is `margin`. A text wider than the screen is cut.
    void Show(const QRect& place, int margin, const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_strText;
    int m_nMargin = 0;
};
