#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>

#include <array>
#include <map>
#include <memory>

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
class GridFont {
public:
    explicit GridFont(const QFont& font);

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

    /// The font to draw a text with, so that it gets the measured width.
    [[nodiscard]] const QFont& FontFor(TextSize size) const {
        return size.shaped ? m_fontShaped : m_fontPlain;
    }

    /// The text with blanks in place of control characters and line ends.
    [[nodiscard]] static QString OneLine(const QString& text);

private:
    using Page = std::array<qint32, 256>;

    /// Advances, in 1/64 pixel, of the characters that can stand in a run of one script; below 0
    /// is one of the marks told in the source.
    struct Advances {
        QChar letter; ///< a letter of the script, to measure common characters behind
        std::array<std::unique_ptr<Page>, 256> pages;
    };

    Advances& AdvancesFor(QChar letter) const;
    qint32 Advance(Advances& run, QChar character) const;
    qint32 MeasureCharacter(const Advances& run, QChar character) const;
    qint32 Units(const QString& text) const;
    TextSize MeasureLayout(const QString& text) const;

    QFont m_fontShaped;
    QFont m_fontPlain;
    QFontMetricsF m_metricsShaped;
    QFontMetricsF m_metricsPlain;
    int m_nHeight;
    int m_nAscent;
    mutable std::map<QChar::Script, Advances> m_runs;
    Advances& m_latin; ///< the entry of m_runs that nearly every text begins with
};
