#pragma once

#include "skin/Pictures.h"

#include <QBasicTimer>
#include <QColor>
#include <QEventLoop>
#include <QPixmap>
#include <QWidget>

#include <chrono>
#include <optional>

/// A picture in the shape that it has, shown for a while over everything else. It takes neither
/// focus nor clicks.
///
/// Thread: interface thread. It hides by itself only while events are handled.
class CSplashScreenEx : public QWidget {
public:
    static constexpr std::chrono::milliseconds kDefaultTimeout{2000};

    /// With a timeout of 0 the splash stays until Hide(). The text is shown in the middle of the
    /// picture.
    CSplashScreenEx(QWidget* parent, const QString& text,
                    std::chrono::milliseconds timeout = kDefaultTimeout);

    /// The picture, which gives the window its size and, without the pixels of the key colour, its
    /// shape. False if it can't be loaded; then Show() shows nothing.
    bool SetBitmap(PictureId picture, const std::optional<QColor>& key);

    /// In the middle of the screen. Returns once it is painted, which takes 50 ms at most. Input
    /// waits until then.
    void Show();
    void Hide();

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    const QString m_strText;
    const std::chrono::milliseconds m_timeout;
    QPixmap m_bitmap;
    QBasicTimer m_timer;
    QEventLoop m_untilPainted;
    bool m_bPainted = false;
};
