#pragma once

#include "skin/Pictures.h"

#include <QBasicTimer>
#include <QColor>
#include <QEventLoop>
#include <QFont>
#include <QPixmap>
#include <QWidget>

#include <chrono>
#include <optional>

/// A picture in the shape that it has, shown for a while over everything. It takes neither focus
/// nor clicks.
///
/// Thread: interface thread. It hides by itself only while events are handled.
class CSplashScreenEx : public QWidget {
public:
    /// Bits of the style; others have no meaning here.
    static constexpr int kCenterOnScreen = 8;
    static constexpr int kCenterOnParent = 16;

    /// Bits of a font's style.
    static constexpr int kBold = 1;
    static constexpr int kItalic = 2;
    static constexpr int kUnderline = 4;

    static constexpr std::chrono::milliseconds kDefaultTimeout{2000};

    /// `parent` is the window to be centred on, and may be none. With a timeout of 0 the splash
    /// stays until Hide(). The text is shown in the middle of the picture.
    CSplashScreenEx(QWidget* parent, const QString& text,
                    std::chrono::milliseconds timeout = kDefaultTimeout,
                    int style = kCenterOnScreen);

    /// The picture, which gives the window its size and, without the pixels of the key colour, its
    /// shape. False if it can't be loaded; then Show() shows nothing.
    bool SetBitmap(PictureId picture, const std::optional<QColor>& key);

    /// `size` is the height of the letters in pixels at 100 %.
    void SetTextFont(const QString& face, int size, int style);

    /// Returns once it is painted, which takes 50 ms at most. Input waits until then.
    void Show();
    void Hide();

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void Place();

    const QString m_strText;
    const std::chrono::milliseconds m_timeout;
    const int m_style;
    QPixmap m_bitmap;
    QBasicTimer m_timer;
    QEventLoop m_untilPainted;
    bool m_bPainted = false;
};
