#pragma once

#include "skin/Pictures.h"

#include <QKeySequence>
#include <QPushButton>
#include <QVariantAnimation>

/// The common part of buttons that are drawn from pictures: label, size, hover and focus ring.
/// Clicks, keyboard, default button and menu are those of any push button; text and icon are not
/// drawn.
///
/// All of its rectangle takes the mouse. It takes the focus when it is clicked.
///
/// Thread: interface thread.
class CPictureButton : public QPushButton {
public:
    /// The label: tool tip and accessible name. It may be a menu's text: mnemonic and ellipsis are
    /// left out. The tool tip names the key that does the same, if there is one.
    void SetTooltipText(const QString& text, const QKeySequence& key = {});

    /// The same, and the mnemonic of `text` is the button's key, with Alt.
    void SetLabel(const QString& text);

    [[nodiscard]] QSize sizeHint() const override { return {45, 44}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    CPictureButton(const QString& tooltip, QWidget* parent);

    /// Draws the button but for its focus ring.
    virtual void DrawButton(QPainter& painter) const = 0;

    /// How much of the hover look is to be seen, from 0 to 1. It fades in and out.
    [[nodiscard]] qreal HoverStrength() const;

    /// Draws `over` on `under` with an opacity of `strength`; where that is 1, `over` alone, so
    /// that soft edges stay as they are.
    static void DrawFaded(QPainter& painter, const QPixmap& under, const QPixmap& over,
                          qreal strength);

    [[nodiscard]] QPixmap Picture(PictureId id) const {
        return LoadPicture(id, devicePixelRatioF());
    }

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& place) const override {
        return rect().contains(place);
    }

private:
    void SetMouseOver(bool over);

    bool m_bMouseOver = false;
    QVariantAnimation m_fade;
};
