#include "drawing/MeasuredFont.h"
#include "grid/GridCellCheck.h"
#include "tests/grid/GridFixture.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPixmap>

#include <cmath>
#include <random>

namespace {

/// Letters of scripts without shaping, and what stands between them: the first and last of blocks.
constexpr int kSimple[][2] = {{0x20, 0x7E},     {0xA1, 0xAC},     {0xAE, 0x24F},
                              {0x370, 0x3E1},   {0x400, 0x482},   {0x10D0, 0x10F0},
                              {0x1E00, 0x1EFF}, {0x2010, 0x2027}, {0x20A0, 0x20BF},
                              {0x3041, 0x3096}, {0x4E00, 0x9FA5}, {0xAC00, 0xD7A3}};

QString RandomText(std::mt19937& random) {
    const auto& block = kSimple[random() % std::size(kSimple)];
    QString text;
    for (size_t left = 1 + random() % 30; left > 0; --left) {
        const auto& [first, last] = random() % 3 ? block : kSimple[0];
        const QChar character(first + int(random() % (last - first + 1)));
        if (character.category() != QChar::Other_NotAssigned)
            text += character;
    }
    return text;
}

std::vector<QFont> Fonts() {
    std::vector<QFont> fonts;
    for (const auto& family : {"Liberation Sans", "DejaVu Sans"}) {
        for (const double points : {7.0, 10.5, 22.0}) {
            QFont font(family);
            font.setPointSizeF(points);
            fonts.push_back(font);
        }
    }
    fonts[1].setHintingPreference(QFont::PreferNoHinting);
    fonts.back().setBold(true);
    return fonts;
}

/// What a call draws at the point (10, 40).
template <class Draw>
QImage Drawn(qreal ratio, Draw draw) {
    QImage image(QSize(700, 60) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    draw(painter, QPoint(10, 40));
    return image;
}

QString Elided(const QFont& font, const QString& text, int room) {
    return QFontMetricsF(font).elidedText(text, Qt::ElideRight, room);
}

/// Expects a text to be as wide as its layout, and to be drawn so, whole and with an ellipsis.
void ExpectLaidOut(const CMeasuredFont& font, const QString& text, qreal scale) {
    SCOPED_TRACE(text.toStdString());
    const CMeasuredFont::TextSize size = font.Measure(text);
    const QFont& own = font.FontFor(size);
    EXPECT_EQ(size.width, static_cast<int>(std::ceil(QFontMetricsF(own).horizontalAdvance(text))));
    for (const int room : {size.width, size.width * 2 / 3, 3}) {
        const auto layout = [&](QPainter& painter, QPoint at) {
            painter.setFont(own);
            painter.drawText(at, room < size.width ? Elided(own, text, room) : text);
        };
        const auto draw = [&](QPainter& painter, QPoint at) {
            font.Draw(painter, at, text, size, room);
        };
        EXPECT_TRUE(Drawn(scale, draw) == Drawn(scale, layout)) << room;
    }
}

TEST(GridFontTest, AnySimpleTextIsAsWideAndLooksAsItsLayout) {
    std::mt19937 random(3);
    std::vector<QFont> fonts = Fonts();
    fonts[0].setUnderline(true);
    fonts[3].setCapitalization(QFont::AllUppercase);
    for (const QFont& font : fonts) {
        SCOPED_TRACE(font.toString().toStdString());
        const CMeasuredFont measured(font);
        for (int i = 0; i < 40; ++i) {
            const QString text = "Ha\u0161ek, " + RandomText(random);
            EXPECT_FALSE(measured.Measure(text).shaped);
            ExpectLaidOut(measured, text, i % 3 ? 1 : 1.25);
        }
    }
}

TEST(GridFontTest, ATextRunsInItsOwnDirectionWhateverThePaintersIs) {
    const struct {
        QString text;
        int room;
        QString fromLeft; ///< empty: elided, with the ellipsis at the end, that is on the left
    } cases[] = {{"שלום, world 12!", 600, "!world 12 ,םולש"},
                 {"Song שיר, 3.", 600, "Song 3 ,ריש."},
                 {"12 שיר!", 600, "!ריש 12"},
                 {"שששששששש and so on", 60, {}}};
    const CMeasuredFont font(QFont("DejaVu Sans", 10));
    for (const auto& row : cases) {
        const QString elided = Elided(font.Font(), row.text, row.room);
        const QString expected =
            row.fromLeft.isEmpty() ? elided.back() + elided.chopped(1) : row.fromLeft;
        const auto reference = [&](QPainter& painter, QPoint at) {
            painter.setFont(font.Font());
            painter.drawText(at, QChar(0x202D) + expected); // each character left to right
        };
        const auto draw = [&](QPainter& painter, QPoint at) {
            painter.setLayoutDirection(row.text[0].isDigit() ? Qt::LeftToRight : Qt::RightToLeft);
            const CMeasuredFont::TextSize size = font.Measure(row.text);
            font.Draw(painter, at, row.text, size, std::min(row.room, size.width));
        };
        EXPECT_TRUE(Drawn(1, draw) == Drawn(1, reference)) << row.text.toStdString();
    }
}

TEST(GridFontTest, OtherTextsAreLaidOutWithShaping) {
    const QString texts[] = {
        "Cafe\u0301 del mar",          // combining mark
        "نسم علينا الهوى 12",          // joining, right to left
        "הבה נגילה",                   // right to left
        "สวัสดีชาวโลก",                  // vowels above and below
        "\U0001F3B5 Song",             // surrogates
        "soft\u00ADhyphen\u200Bs",     // format characters
        "\u1112\u1161\u11ab",          // parts of a Hangul syllable
        QString(QChar(0xDC80)) + u'x', // a lone surrogate
    };
    for (const QFont& font : Fonts()) {
        const CMeasuredFont measured(font);
        for (const QString& text : texts) {
            EXPECT_TRUE(measured.Measure(text).shaped) << text.toStdString();
            EXPECT_EQ(measured.FontFor(measured.Measure(text)), font);
            ExpectLaidOut(measured, text, 1);
        }
    }
}

TEST(GridFontTest, LineEndsAndControlCharactersCountAsBlanks) {
    const CMeasuredFont font(QFont("Liberation Sans", 9));
    const QString broken = "a\nb\r\n\tc\u2028d\u0007";
    const QString line = "a b   c d ";
    EXPECT_EQ(CMeasuredFont::OneLine(broken), line);
    EXPECT_EQ(font.Measure(broken).width, font.Measure(line).width);
    EXPECT_FALSE(font.Measure(broken).shaped);
    EXPECT_EQ(font.Measure(QString()).width, 0);
}

TEST(GridFit, AColumnIsAsWideAsItsWidestCellNeeds) {
    const auto grid = MakeGrid(200, 3);
    std::mt19937 random(5);
    int widest = 0;
    for (int row = 0; row < 200; ++row) {
        CGridCellBase& cell = *grid->GetCell(row, 1);
        cell.SetText(RandomText(random));
        widest = std::max(widest, cell.GetTextExtent(cell.GetText()).width());
    }
    grid->AutoSizeColumns();
    EXPECT_EQ(grid->GetColumnWidth(1), widest + 8);
    grid->GetCell(77, 1)->SetText(QString());
    grid->GetCell(0, 1)->SetText(QString(400, u'm')); // the header counts, and its marks
    grid->AutoSizeColumn(1, GridFit::Data);
    EXPECT_LE(grid->GetColumnWidth(1), widest + 8);
    grid->AutoSizeColumn(1);
    const int header = grid->GetColumnWidth(1);
    EXPECT_EQ(header, grid->GetCell(0, 1)->GetCellExtent().width());
    grid->SetSortColumn(1, true);
    grid->AutoSizeColumn(1, GridFit::Header);
    EXPECT_GT(grid->GetColumnWidth(1), header + 8);
    grid->setFont(QFont(grid->font().family(), 2 * grid->font().pointSize()));
    grid->AutoSizeColumn(1);
    EXPECT_GT(grid->GetColumnWidth(1), 3 * header / 2) << "cells have the grid's font";
}

TEST(GridFit, ImagesChecksAndBarsHaveTheirOwnWidth) {
    const auto grid = MakeGrid(3, 2);
    const auto extent = [&](int col) { return grid->GetCell(1, col)->GetCellExtent(); };
    const QSize text = extent(0);
    grid->SetImageList({QIcon(QPixmap(16, 16))});
    grid->GetCell(1, 0)->SetImage(0);
    EXPECT_EQ(extent(0).width(), text.width() + 20);
    grid->GetCell(1, 0)->SetImage(1); // there is no such image
    EXPECT_EQ(extent(0), text);
    grid->SetCellType(1, 0, RuntimeClass<CGridCellCheck>);
    EXPECT_GE(extent(0).width(), 20);
    grid->SetCellType(1, 1, RuntimeClass<CGridCellBar>);
    grid->GetCell(1, 1)->SetText(QString(500, u'x'));
    EXPECT_EQ(extent(1), QSize(10, text.height()));
}

} // namespace
