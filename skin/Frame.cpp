#include "skin/Frame.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int kIconSide = 16; // lengths at 100 %
constexpr int kIconTop = 5;
constexpr int kTitleHeight = 18;
constexpr int kMinimumAddedHeight = 20;

constexpr int kCustomStates = 3;
constexpr qsizetype kLongestTitle = 2000; // UTF-16 units, more than fit across any screen

/// What tells the strips apart. Tails differ by a pixel, and themes are drawn for that.
struct StripKind {
    Qt::Orientation along;
    int tailShift; ///< how far the tail stands behind its place
    int tailCut;   ///< how much its end lacks
};
constexpr StripKind kTop{Qt::Horizontal, 1, 1};
constexpr StripKind kBottom{Qt::Horizontal, 0, 1};
constexpr StripKind kSide{Qt::Vertical, 0, 0};

/// Draws one look of a strip.
class StripPainter {
public:
    StripPainter(QPainter& painter, const StripKind& kind, const ThemeStrip& strip, QPoint at,
                 bool inactive)
        : m_painter(painter)
        , m_kind(kind)
        , m_strip(strip)
        , m_at(at) {
        const QSize size = strip.bitmap.Image().size();
        m_nLength = IsHorizontal() ? size.width() : size.height();
        m_nThickness = (IsHorizontal() ? size.height() : size.width()) / 2;
        m_nLookStart = inactive ? m_nThickness : 0;
    }

    void Draw(int length) {
        DrawPiece(0, m_strip.headEnd, 0);
        DrawMiddle(length);
        DrawPiece(m_strip.tailStart, m_nLength - m_kind.tailCut,
                  length - (m_nLength - m_strip.tailStart) + m_kind.tailShift);
    }

private:
    [[nodiscard]] bool IsHorizontal() const { return m_kind.along == Qt::Horizontal; }

    /// A rectangle by its place along the strip and across it.
    [[nodiscard]] QRect Rect(int start, int end, int across) const {
        return IsHorizontal() ? QRect(start, across, end - start, m_nThickness)
                              : QRect(across, start, m_nThickness, end - start);
    }

    /// Draws [from, to) of the picture, as far as the picture goes, at `place` along the strip.
    void DrawPiece(int from, int to, int place) {
        const int end = std::min(to, m_nLength);
        if (from < end)
            m_painter.drawImage(m_at + Rect(place, place, 0).topLeft(), m_strip.bitmap.Image(),
                                Rect(from, end, m_nLookStart));
    }

    /// Repeats the middle as often as it takes to reach the tail, and not beyond the strip's end.
    void DrawMiddle(int length) {
        const int tile = m_strip.tailStart - m_strip.headEnd;
        const int tiles = std::max((length - m_nLength) / tile + 1, 0);
        const int end = std::min(m_strip.headEnd + (tiles + 1) * tile, length);
        if (end <= m_strip.headEnd || m_strip.tailStart > m_nLength)
            return;
        const QRect place = Rect(m_strip.headEnd, end, 0).translated(m_at);
        const QRect middle = Rect(m_strip.headEnd, m_strip.tailStart, m_nLookStart);
        const QPoint oldOrigin = m_painter.brushOrigin();
        m_painter.setBrushOrigin(place.topLeft());
        m_painter.fillRect(place, QBrush(m_strip.bitmap.Image().copy(middle)));
        m_painter.setBrushOrigin(oldOrigin);
    }

    QPainter& m_painter;
    const StripKind& m_kind;
    const ThemeStrip& m_strip;
    QPoint m_at;
    int m_nLength = 0;
    int m_nThickness = 0;
    int m_nLookStart = 0;
};

void DrawTopStrip(QPainter& painter, const Theme& theme, QPoint at, int windowWidth,
                  bool inactive) {
    StripPainter(painter, kTop, theme.top, at + QPoint(theme.m_nLeftWidth, 0), inactive)
        .Draw(windowWidth - theme.m_nRightWidth - theme.m_nLeftWidth + 1);
}

/// The top band without anything on it. No higher than the window: themes may be.
QImage DrawBandStrips(const Theme& theme, QSize window, bool inactive) {
    const int width = window.width();
    QImage band(width, std::min(theme.m_nTopHeight, window.height()), QImage::Format_RGB32);
    if (band.isNull())
        return band;
    band.fill(Qt::black);
    QPainter painter(&band);
    DrawTopStrip(painter, theme, {0, 0}, width, inactive);
    StripPainter(painter, kSide, theme.left, {0, 0}, inactive).Draw(theme.left.bitmap.Height());
    StripPainter(painter, kSide, theme.right, {width - theme.m_nRightWidth, 0}, inactive)
        .Draw(theme.right.bitmap.Height());
    return band;
}

/// Where a band without anything on it belongs to the window.
QRegion ShapeOf(const QImage& band, const Theme& theme) {
    return theme.m_bUsesTran ? BitmapToRegion(band, theme.m_clrTransparent) : QRegion(band.rect());
}

/// Copies a part of a theme's picture, its holes left out where the theme has any.
void DrawKeyed(QPainter& painter, QPoint at, const Theme& theme, const QImage& image,
               const QRect& part) {
    const QRect reached = part & image.rect();
    if (reached.isEmpty())
        return;
    if (!theme.m_bUsesTran) {
        painter.drawImage(at, image, reached);
        return;
    }
    const QImage piece = image.copy(reached);
    painter.save();
    painter.setClipRegion(BitmapToRegion(piece, theme.m_clrTransparent).translated(at),
                          Qt::IntersectClip);
    painter.drawImage(at, piece);
    painter.restore();
}

/// 0 as it lies there, 1 pressed, 2 under the mouse.
int ButtonState(const FrameState& state, int hit) {
    if (state.m_nPressedHit == hit)
        return 1;
    return state.m_nHoverHit == hit ? 2 : 0;
}

void DrawButton(QPainter& painter, const Theme& theme, const FrameState& state,
                const ThemeButton& button, int hit) {
    const QRect place = button.PlaceIn(state.size.width());
    const QRect part(place.width() * ButtonState(state, hit), 0, place.width(),
                     theme.close.bitmap.Height());
    DrawKeyed(painter, place.topLeft(), theme, button.bitmap.Image(), part);
}

/// The button that maximizes or, in a maximized window, takes that back.
const ThemeButton& MaximizeButton(const Theme& theme, const FrameState& state) {
    const bool restores =
        state.m_nWindowState == WindowState::Maximized && theme.restore.bitmap.IsLoaded();
    return restores ? theme.restore : theme.maximize;
}

QRect CustomButtonPlace(const Theme& theme, const FrameState& state,
                        const SkinButtonRecord& button) {
    return {state.size.width() - theme.Scaled(button.x), theme.Scaled(button.y),
            button.image.width() / kCustomStates, button.image.height()};
}

void DrawButtons(QPainter& painter, const Theme& theme, const FrameState& state) {
    DrawButton(painter, theme, state, theme.close, FrameHit::Close);
    if (state.m_bHasMinimize)
        DrawButton(painter, theme, state, theme.minimize, FrameHit::Minimize);
    if (state.m_bHasMaximize && theme.maximize.bitmap.IsLoaded())
        DrawButton(painter, theme, state, MaximizeButton(theme, state), FrameHit::Maximize);
    int hit = FrameHit::FirstCustom;
    for (const SkinButtonRecord& button : state.m_customButtons) {
        const QRect place = CustomButtonPlace(theme, state, button);
        const int left = place.width() * ButtonState(state, hit++);
        if (!place.isEmpty())
            painter.drawImage(place, button.image, QRect({left, 0}, place.size()));
    }
}

/// Arial as bold as titles are, its lines so high.
QFont TitleFont(int height) {
    QFont font(QStringLiteral("Arial"));
    font.setBold(true);
    font.setPixelSize(100);
    font.setPixelSize(std::max(qRound(100 * height / QFontMetricsF(font).height()), 1));
    return font;
}

/// The title, or as many of its words as there is room for.
QString ElidedTitle(const QString& title, const QFontMetrics& metrics, int width) {
    const QString cut = metrics.elidedText(title, Qt::ElideRight, width);
    if (cut == title || cut.isEmpty())
        return cut;
    const qsizetype end = title.lastIndexOf(u' ', cut.size() - 1); // the last of it is the ellipsis
    const QString words = title.left(std::max<qsizetype>(end, 0)).trimmed();
    return words.isEmpty() ? cut : words + cut.back();
}

void DrawTitle(QPainter& painter, const Theme& theme, const FrameState& state) {
    const int right = state.size.width() - theme.top.bitmap.Width() + theme.top.tailStart;
    const QRect place(QPoint(theme.m_nTextShift, theme.m_nTextShiftVert),
                      QPoint(right - 1, theme.m_nTopHeight - 1));
    if (place.isEmpty() || state.m_strTitle.isEmpty())
        return;
    const QFont font = TitleFont(theme.Scaled(kTitleHeight));
    const QString title =
        ElidedTitle(state.m_strTitle.left(kLongestTitle), QFontMetrics(font), place.width());
    painter.setFont(font);
    painter.setPen(state.m_bActive ? theme.m_clrActiveText : theme.m_clrInactiveText);
    painter.drawText(
        place, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine, title);
}

QRect IconPlace(const Theme& theme) {
    const int side = theme.Scaled(kIconSide);
    return {theme.m_nLeftWidth, theme.Scaled(kIconTop), side, side};
}

/// Draws on a band of strips what stands on it.
void DrawOnBand(QImage& band, const QRegion& shape, const Theme& theme, const FrameState& state) {
    QPainter painter(&band);
    if (theme.m_bUsesTran)
        painter.setClipRegion(shape);
    DrawButtons(painter, theme, state);
    if (!state.icon.isNull())
        painter.drawImage(IconPlace(theme), state.icon);
    DrawTitle(painter, theme, state);
}

/// A rectangle of a window, its ends outside, and the code of what lies there. None holds a point
/// where an end lies before a start, as in a window that is too small.
struct HitZone {
    int left, top, right, bottom;
    int hit;

    [[nodiscard]] bool Contains(QPoint point) const {
        return point.x() >= left && point.x() < right && point.y() >= top && point.y() < bottom;
    }
};

HitZone ZoneOf(const QRect& place, int hit) {
    return {place.x(), place.y(), place.x() + place.width(), place.y() + place.height(), hit};
}

/// The edges and corners by which a window is sized. The right corner at the top is as wide as the
/// left edge, and the edge at the top as high as the bottom one.
int HitSizingEdge(const Theme& theme, QSize window, QPoint point) {
    const int w = window.width();
    const int h = window.height();
    const int t = theme.m_nTopHeight;
    const int l = theme.m_nLeftWidth;
    const int r = theme.m_nRightWidth;
    const int b = theme.m_nBottomHeight;
    const HitZone zones[] = {
        {0, 0, l, t, FrameHit::TopLeft},        {w - l, 0, w, t, FrameHit::TopRight},
        {0, h - b, l, h, FrameHit::BottomLeft}, {w - r, h - b, w, h, FrameHit::BottomRight},
        {0, t, l, h - b, FrameHit::Left},       {w - r, t, w, h - b, FrameHit::Right},
        {l, h - b, w - r, h, FrameHit::Bottom}, {l, 0, w - r, b, FrameHit::Top},
    };
    for (const HitZone& zone : zones) {
        if (zone.Contains(point))
            return zone.hit;
    }
    return FrameHit::Nowhere;
}

using Runs = std::vector<std::pair<int, int>>; // from and to, the latter outside

void FindRuns(const QRgb* line, int width, QRgb key, Runs& runs) {
    constexpr QRgb kColour = 0xFFFFFF;
    const auto isKey = [key](QRgb pixel) { return ((pixel ^ key) & kColour) == 0; };
    runs.clear();
    for (const QRgb* at = line; at != line + width;) {
        const QRgb* const from = std::find_if_not(at, line + width, isKey);
        at = std::find_if(from, line + width, isKey);
        if (from != at)
            runs.emplace_back(from - line, at - line);
    }
}

} // namespace

void DrawFrameSides(QPainter& painter, const Theme& theme, const QRect& window, bool inactive,
                    bool withTop) {
    const QPoint at = window.topLeft();
    const int w = window.width();
    const int h = window.height();
    if (withTop)
        DrawTopStrip(painter, theme, at, w, inactive);
    StripPainter(painter, kSide, theme.left, at, inactive).Draw(h);
    StripPainter(painter, kSide, theme.right, at + QPoint(w - theme.m_nRightWidth, 0), inactive)
        .Draw(h);
    StripPainter(painter, kBottom, theme.bottom,
                 at + QPoint(theme.m_nLeftWidth, h - theme.m_nBottomHeight), inactive)
        .Draw(w - theme.m_nRightWidth - theme.m_nLeftWidth);
}

void DrawFrame(QPainter& painter, const Theme& theme, const FrameState& state) {
    const QRect window({0, 0}, state.size);
    painter.save();
    painter.setClipRect(window.adjusted(0, theme.m_nTopHeight, 0, 0), Qt::IntersectClip);
    DrawFrameSides(painter, theme, window, !state.m_bActive, false);
    painter.restore();

    QImage band = DrawBandStrips(theme, state.size, !state.m_bActive);
    if (band.isNull())
        return;
    const QRegion shape = ShapeOf(band, theme);
    DrawOnBand(band, shape, theme, state);
    painter.save();
    painter.setClipRegion(shape, Qt::IntersectClip);
    painter.drawImage(0, 0, band);
    painter.restore();
}

QRegion BitmapToRegion(const QImage& image, const QColor& key) {
    const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
    std::vector<QRect> rects;
    Runs runs;
    Runs runsAbove;
    for (int y = 0; y < pixels.height(); ++y) {
        FindRuns(reinterpret_cast<const QRgb*>(pixels.constScanLine(y)), pixels.width(), key.rgb(),
                 runs);
        if (runs == runsAbove) {
            for (std::size_t i = rects.size() - runs.size(); i < rects.size(); ++i)
                rects[i].setBottom(y);
        } else {
            for (const auto& [from, to] : runs)
                rects.emplace_back(from, y, to - from, 1);
        }
        runsAbove.swap(runs);
    }
    QRegion region;
    region.setRects(rects.data(), static_cast<int>(rects.size()));
    return region;
}

QRegion BuildWindowRegion(const Theme& theme, QSize size) {
    const QRect window({0, 0}, size);
    if (!theme.m_bUsesTran)
        return window;
    const QRegion band = ShapeOf(DrawBandStrips(theme, size, false), theme);
    return band + window.adjusted(0, theme.m_nTopHeight, 0, 0);
}

std::vector<PlacedButton> PlaceButtons(const Theme& theme, const FrameState& state) {
    std::vector<PlacedButton> buttons;
    const auto add = [&](const ThemeButton& button, int hit) {
        if (button.bitmap.IsLoaded())
            buttons.push_back({hit, button.PlaceIn(state.size.width())});
    };
    add(theme.close, FrameHit::Close);
    if (state.m_bHasMinimize)
        add(theme.minimize, FrameHit::Minimize);
    if (state.m_bHasMaximize)
        add(MaximizeButton(theme, state), FrameHit::Maximize);
    int hit = FrameHit::FirstCustom;
    for (const SkinButtonRecord& button : state.m_customButtons)
        buttons.push_back({hit++, CustomButtonPlace(theme, state, button)});
    return buttons;
}

int HitTest(const Theme& theme, const FrameState& state, QPoint point) {
    for (const PlacedButton& button : PlaceButtons(theme, state)) {
        if (ZoneOf(button.place, button.hit).Contains(point))
            return button.hit;
    }
    if (ZoneOf(IconPlace(theme), FrameHit::SystemMenu).Contains(point))
        return FrameHit::SystemMenu;
    if (state.m_bSizable && state.m_nWindowState != WindowState::Maximized) {
        if (const int hit = HitSizingEdge(theme, state.size, point))
            return hit;
    }
    const HitZone caption{theme.m_nLeftWidth, theme.Scaled(kIconTop),
                          state.size.width() - theme.m_nRightWidth, theme.m_nTopHeight,
                          FrameHit::Caption};
    return caption.Contains(point) ? FrameHit::Caption : FrameHit::Client;
}

QSize MinimumTrackSize(const Theme& theme) {
    return {theme.top.bitmap.Width() + theme.left.bitmap.Width() + theme.right.bitmap.Width(),
            theme.left.bitmap.Height() + theme.Scaled(kMinimumAddedHeight)};
}
