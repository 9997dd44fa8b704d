#include "tools/make-theme/Glyphs.h"

#include "skin/Colours.h"
#include "tools/make-theme/Drawing.h"
#include "tools/make-theme/GlyphPen.h"

#include <map>

namespace {

void Triangle(GlyphPen& pen, qreal base, qreal tip) {
    pen.Outline({{base, -7}, {tip, 0}, {base, 7}});
}

void List(GlyphPen& pen) {
    pen.Line({{-9, -7}, {9, -7}});
    pen.Line({{-9, -2}, {9, -2}});
    pen.Line({{-9, 3}, {-1, 3}});
}

void Folder(GlyphPen& pen) {
    pen.Outline({{-9, 7}, {-9, -7}, {-3, -7}, {-1, -4}, {9, -4}, {9, 7}});
}

void ArrowDown(GlyphPen& pen, QPointF tip, qreal length, qreal head) {
    pen.Line({tip - QPointF(0, length), tip});
    pen.Line({tip + QPointF(-head, -head), tip, tip + QPointF(head, -head)});
}

void ArrowRight(GlyphPen& pen, QPointF tip, qreal length, qreal head) {
    pen.Line({tip - QPointF(length, 0), tip});
    pen.Line({tip + QPointF(-head, -head), tip, tip + QPointF(-head, head)});
}

void Magnifier(GlyphPen& pen, QPointF middle, qreal radius, QPointF end) {
    const qreal edge = radius * 0.75;
    pen.Circle(middle, radius);
    pen.Line({middle + QPointF(edge, edge), end});
}

using Draw = void (*)(GlyphPen&);

const std::map<PictureId, Draw> kGlyphs = {
    {PictureId::NewPlaylist,
     [](GlyphPen& pen) {
         List(pen);
         pen.Plus({6, 5}, 3);
     }},
    {PictureId::ClosePlaylist,
     [](GlyphPen& pen) {
         List(pen);
         pen.Cross({6, 5}, 3);
     }},
    {PictureId::ScanPC,
     [](GlyphPen& pen) {
         pen.Circle({-2, -2}, 7);
         pen.Dot({-2, -2});
         pen.InFront([&pen] { Magnifier(pen, {4, 4}, 4, {9, 9}); });
     }},
    {PictureId::StartScan,
     [](GlyphPen& pen) {
         Magnifier(pen, {-2, -2}, 7, {9, 9});
         pen.Solid({{-3, -4}, {0, -2}, {-3, 0}});
     }},
    {PictureId::CancelAll,
     [](GlyphPen& pen) {
         pen.Circle({0, 0}, 9);
         pen.Cross({0, 0}, 3);
     }},
    {PictureId::CopyToPhone,
     [](GlyphPen& pen) {
         pen.RoundedLine({{-2, -6}, {-2, -9}, {9, -9}, {9, 9}, {-2, 9}, {-2, 2}}, 2);
         pen.Line({{3, 5}, {4, 5}});
         ArrowRight(pen, {5, -2}, 14, 3);
     }},
    {PictureId::CopyToCollection,
     [](GlyphPen& pen) {
         pen.Line({{-4, -2}, {-4, -8}, {0, -8}, {2, -5}, {9, -5}, {9, 8}, {-4, 8}, {-4, 6}});
         ArrowRight(pen, {5, 2}, 14, 3);
     }},
    {PictureId::Previous,
     [](GlyphPen& pen) {
         pen.Line({{-7, -7}, {-7, 7}});
         Triangle(pen, 7, -3);
     }},
    {PictureId::Next,
     [](GlyphPen& pen) {
         pen.Line({{7, -7}, {7, 7}});
         Triangle(pen, -7, 3);
     }},
    {PictureId::Play,
     [](GlyphPen& pen) {
         pen.Outline({{-4, -8}, {8, 0}, {-4, 8}});
     }},
    {PictureId::Pause,
     [](GlyphPen& pen) {
         pen.Box({-7, -8}, {-3, 8}, 1);
         pen.Box({3, -8}, {7, 8}, 1);
     }},
    {PictureId::Ok,
     [](GlyphPen& pen) {
         pen.Line({{-8, 1}, {-3, 6}, {8, -5}});
     }},
    {PictureId::No,
     [](GlyphPen& pen) {
         pen.Cross({0, 0}, 7);
     }},
    {PictureId::Close,
     [](GlyphPen& pen) {
         pen.Line({{0, -8}, {-8, -8}, {-8, 8}, {0, 8}});
         ArrowRight(pen, {8, 0}, 11, 4);
     }},
    {PictureId::Help,
     [](GlyphPen& pen) {
         pen.Arc({0, -4}, 5, 180, -210);
         pen.Bend({4, -1}, {0, 0}, {0, 3});
         pen.Dot({0, 8});
     }},
    {PictureId::Browse,
     [](GlyphPen& pen) {
         pen.Line({{-9, 7}, {-9, -7}, {-3, -7}, {-1, -4}, {6, -4}, {6, -1}});
         pen.Outline({{-9, 7}, {-5, -1}, {9, -1}, {6, 7}});
     }},
    {PictureId::NewFolder,
     [](GlyphPen& pen) {
         Folder(pen);
         pen.Plus({0, 2}, 3);
     }},
    {PictureId::MoveDown,
     [](GlyphPen& pen) {
         ArrowDown(pen, {0, 8}, 16, 6);
     }},
    {PictureId::MoveUp,
     [](GlyphPen& pen) {
         pen.Line({{0, -8}, {0, 8}});
         pen.Line({{-6, -2}, {0, -8}, {6, -2}});
     }},
    {PictureId::SavePlaylist,
     [](GlyphPen& pen) {
         pen.Line({{-8, 3}, {-8, 8}, {8, 8}, {8, 3}});
         ArrowDown(pen, {0, 3}, 12, 4);
     }},
};

} // namespace

const std::vector<PictureId>& GlyphIds() {
    static const std::vector<PictureId> ids = [] {
        std::vector<PictureId> all;
        for (const auto& [id, draw] : kGlyphs)
            all.push_back(id);
        return all;
    }();
    return ids;
}

QImage DrawGlyph(PictureId id, qreal scale) {
    QImage image = Blank(kButtonWidth, kButtonHeight, scale);
    SmoothPainter painter(image);
    GlyphPen pen(painter, ButtonMiddle(scale), scale, Colours::kQuietText);
    kGlyphs.at(id)(pen);
    return image;
}

QImage DrawVolume(qreal scale) {
    QImage image = Blank(20, 20, scale);
    SmoothPainter painter(image);
    const qreal middle = StrokeMiddle(10 * scale, scale);
    GlyphPen pen(painter, {middle, middle}, scale, Colours::kQuietText);
    pen.Outline({{-8, -3}, {-5, -3}, {-1, -7}, {-1, 7}, {-5, 3}, {-8, 3}});
    pen.Arc({-1, 0}, 5, -40, 80);
    pen.Arc({-1, 0}, 9, -48, 96);
    return image;
}
