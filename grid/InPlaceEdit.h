#pragma once

#include "grid/GridTypes.h"

#include <QElapsedTimer>
#include <QLineEdit>

/// The text field that stands over a cell while its text is edited.
///
/// Interface thread only. It only says when the edit is over; its owner takes the text and the
/// field away.
class CInPlaceEdit final : public QLineEdit {
    Q_OBJECT

public:
    /// A child of `viewport`, over `cell`, holding `text`, all of it selected.
    CInPlaceEdit(QWidget* viewport, CCellID cell, const QString& text);

    [[nodiscard]] CCellID Cell() const { return m_idCell; }
    /// The cell has moved.
    void SetCell(CCellID cell) { m_idCell = cell; }

    /// The edit began with a typed character, which takes the place of the text. Arrow keys then
    /// end the edit.
    void BeginWith(const QString& character);

    /// The edit began with a click at a point of the field.
    void BeginAt(QPoint point);

    /// Stands at `place` of the viewport, and wider where the text needs it, up to the viewport's
    /// right edge.
    void SetPlace(const QRect& place);

    /// Whether the text is another than the edit began with.
    [[nodiscard]] bool IsChanged() const { return text() != m_strBegin; }

Q_SIGNALS:
    /// The edit is over. `key` is the one that ended it, 0 where the focus was lost; Escape has
    /// put the text back by then.
    void Ended(int key, Qt::KeyboardModifiers modifiers);

    /// The click that began the edit was the first half of a double click, at a point of the
    /// viewport.
    void DoubleClicked(QPoint point);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool) override { return false; } // Tab ends the edit

private:
    [[nodiscard]] bool EndsEdit(const QKeyEvent& event) const;
    [[nodiscard]] bool IsSecondClick() const;
    void Fit();

    CCellID m_idCell;
    QString m_strBegin;
    QRect m_rcPlace;
    bool m_bByCharacter = false;
    QElapsedTimer m_sinceClick; ///< not running unless a click began the edit
};
