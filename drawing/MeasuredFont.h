#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QPoint>
#include <QRawFont>
#include <QString>

#include <array>
#include <map>
#include <memory>

class QPainter;

/// A font, and the exact widths of texts in it without a text layout for each of them.
///
/// In scripts whose letters neither join, reorder nor combine, a text that is drawn without
/// shaping and without kerning is exactly as wide as the sum of its characters' advances. The
/// advances are measured once and kept. They depend on the character and on the script of the run
/// it stands in, as the font may stand back for another one there: a character common to all
/// scripts (digit, blank, punctuation mark) belongs to the run of the letters before it, at the
/// head of a text to that of the first letters (Unicode Standard Annex 24).
///
/// Any other text (combining marks, right-to-left, joining scripts, surrogates, format characters)
/// is laid out, with shaping.
///
/// Control characters and line ends count, and are to be drawn, as a blank: see OneLine.
class CMeasuredFont {
public:
    explicit CMeasuredFont(const QFont& font);

    /// The font as it was given.
    [[nodiscard]] const QFont& Font() const { return m_fontShaped; }

    [[nodiscard]] int Height() const { return m_nHeight; }

    /// From the top of the line to the base line.
    [[nodiscard]] int Ascent() const { return m_nAscent; }

    struct TextSize {
        int width;   ///< whole pixels that show the text without ellipsis
        bool shaped; ///< the text needs shaping
    };
    [[nodiscard]] TextSize Measure(const QString& text) const;

    /// The font that gives a text the measured width.
    [[nodiscard]] const QFont& FontFor(TextSize size) const {
        return size.shaped ? m_fontShaped : m_fontPlain;
    }

    /// Draws a text of a measured size, with the painter's pen, from `start` on the base line to
    /// the right: where it is wider than `room` pixels, its beginning and an ellipsis.
    void Draw(QPainter& painter, QPoint start, const QString& text, TextSize size, int room) const;

    /// The text with blanks in place of control characters and line ends.
    [[nodiscard]] static QString OneLine(const QString& text);

private:
    struct Character {
        qint32 advance; ///< in 1/64 pixel; below 0 is one of the marks told in the source
        quint32 glyph;  ///< in m_fontGlyphs; 0 if it is not drawn from there
    };
    using Page = std::array<Character, 256>;

    /// The characters that can stand in a run of one script.
    struct Run {
        QChar letter; ///< a letter of the script, to measure common characters behind
        std::array<std::unique_ptr<Page>, 256> pages;
    };

    Run& RunFor(QChar letter) const;
    const Character& Look(Run& run, QChar character) const;
    qint32 MeasureCharacter(const Run& run, QChar character) const;
    quint32 FindGlyph(QChar character) const;
    bool DrawGlyphs(QPainter& painter, QPoint start, const QString& text, bool elided,
                    int room) const;
    qint32 Units(const QString& text) const;
    TextSize MeasureLayout(const QString& text) const;

    QFont m_fontShaped;
    QFont m_fontPlain;
    QFontMetricsF m_metricsShaped;
    QFontMetricsF m_metricsPlain;
    QRawFont m_fontGlyphs; ///< the font itself, none that stands in; invalid if not to be used
    int m_nHeight;
    int m_nAscent;
    mutable std::map<QChar::Script, Run> m_runs;
    Run& m_latin; ///< the entry of m_runs that nearly every text begins with
};
