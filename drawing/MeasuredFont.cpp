#include "drawing/MeasuredFont.h"

#include <QGlyphRun>
#include <QPainter>
#include <QVarLengthArray>

#include <algorithm>
#include <cmath>

namespace {

constexpr qint32 kUnknown = -1;     // not measured yet
constexpr qint32 kOtherScript = -2; // a letter of another simple script
constexpr qint32 kLayout = -3;      // a text with this character is laid out

constexpr int kUnitsPerPixel = 64; // the fixed point of font engines

QFont Unshaped(QFont font) {
    font.setKerning(false);
    font.setStyleStrategy(QFont::StyleStrategy(font.styleStrategy() | QFont::PreferNoShaping));
    return font;
}

/// Lines through the text and other cases than the text's own are left to the layout.
QRawFont GlyphsOf(const QFont& font) {
    const bool plain = !font.underline() && !font.overline() && !font.strikeOut() &&
                       font.capitalization() == QFont::MixedCase;
    return plain ? QRawFont::fromFont(font) : QRawFont();
}

bool IsBlankOnScreen(QChar character) {
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

/// A script whose letters stand side by side, each as it is; or common to all scripts.
bool IsSimpleScript(QChar character) {
    switch (character.script()) {
    case QChar::Script_Common:
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Armenian:
    case QChar::Script_Georgian:
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
        return true;
    case QChar::Script_Hangul: // whole syllables only: parts of syllables combine
        return character >= QChar(0xAC00) && character <= QChar(0xD7A3);
    default:
        return false;
    }
}

bool IsSimple(QChar character) {
    switch (character.category()) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return false;
    default:
        break;
    }
    switch (character.direction()) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
        return false;
    default:
        return IsSimpleScript(character);
    }
}

/// The script whose font a letter is drawn in. Common characters on their own are drawn as Latin.
QChar::Script RunScript(QChar letter) {
    const QChar::Script script = letter.script();
    return script == QChar::Script_Common ? QChar::Script_Latin : script;
}

} // namespace

CMeasuredFont::CMeasuredFont(const QFont& font)
    : m_fontShaped(font)
    , m_fontPlain(Unshaped(font))
    , m_metricsShaped(m_fontShaped)
    , m_metricsPlain(m_fontPlain)
    , m_fontGlyphs(GlyphsOf(m_fontPlain))
    , m_nHeight(static_cast<int>(std::ceil(m_metricsPlain.height())))
    , m_nAscent(qRound(m_metricsPlain.ascent()))
    , m_latin(RunFor(QChar(u'x'))) {}

CMeasuredFont::TextSize CMeasuredFont::Measure(const QString& text) const {
    Run* run = &m_latin;
    bool letterSeen = false;
    qint64 sum = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qint32 advance = Look(*run, text[i]).advance;
        if (advance >= 0) {
            sum += advance;
            continue;
        }
        if (advance == kLayout)
            return MeasureLayout(text);

        // A run of another script begins; without a letter before it, it began at the head.
        letterSeen = letterSeen || std::any_of(text.begin(), text.begin() + i, [](QChar before) {
                         return before.script() != QChar::Script_Common;
                     });
        run = &RunFor(text[i]);
        if (letterSeen) {
            sum += Look(*run, text[i]).advance;
        } else {
            letterSeen = true;
            sum = 0;
            i = -1;
        }
    }
    return {static_cast<int>((sum + kUnitsPerPixel - 1) / kUnitsPerPixel), false};
}

CMeasuredFont::Run& CMeasuredFont::RunFor(QChar letter) const {
    Run& run = m_runs[RunScript(letter)];
    if (run.letter.isNull())
        run.letter = letter;
    return run;
}

inline const CMeasuredFont::Character& CMeasuredFont::Look(Run& run, QChar character) const {
    std::unique_ptr<Page>& page = run.pages[character.row()];
    if (!page) {
        page = std::make_unique<Page>();
        page->fill({kUnknown, 0});
    }
    Character& entry = (*page)[character.cell()];
    if (entry.advance == kUnknown) {
        entry.advance = MeasureCharacter(run, character);
        if (&run == &m_latin && entry.advance >= 0)
            entry.glyph = FindGlyph(character);
    }
    return entry;
}

qint32 CMeasuredFont::MeasureCharacter(const Run& run, QChar character) const {
    if (IsBlankOnScreen(character))
        character = QChar(u' ');
    if (!IsSimple(character))
        return kLayout;
    if (character.script() != QChar::Script_Common)
        return RunScript(character) == RunScript(run.letter) ? Units(character) : kOtherScript;
    return Units(QString(run.letter) + character) - Units(run.letter);
}

quint32 CMeasuredFont::FindGlyph(QChar character) const {
    if (IsBlankOnScreen(character))
        character = QChar(u' ');
    return m_fontGlyphs.isValid() ? m_fontGlyphs.glyphIndexesForString(character).value(0) : 0;
}

qint32 CMeasuredFont::Units(const QString& text) const {
    return static_cast<qint32>(
        std::lround(m_metricsPlain.horizontalAdvance(text) * kUnitsPerPixel));
}

CMeasuredFont::TextSize CMeasuredFont::MeasureLayout(const QString& text) const {
    return {static_cast<int>(std::ceil(m_metricsShaped.horizontalAdvance(OneLine(text)))), true};
}

void CMeasuredFont::Draw(QPainter& painter, QPoint start, const QString& text, TextSize size,
                         int room) const {
    const bool elided = size.width > room;
    if (!size.shaped && DrawGlyphs(painter, start, text, elided, room))
        return;
    QString line = OneLine(text);
    if (elided)
        line =
            (size.shaped ? m_metricsShaped : m_metricsPlain).elidedText(line, Qt::ElideRight, room);
    painter.setFont(FontFor(size));
    // The whole text tells its direction, also where its head alone would not.
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    // To a point, not into a rectangle, which would take a layout in lines: three times the work.
    painter.drawText(start, line);
}

bool CMeasuredFont::DrawGlyphs(QPainter& painter, QPoint start, const QString& text, bool elided,
                               int room) const {
    QVarLengthArray<quint32, 128> glyphs;
    QVarLengthArray<QPointF, 128> places;
    qint64 end = 0;
    const auto append = [&](const Character& character) {
        glyphs.append(character.glyph);
        places.append(QPointF(static_cast<double>(end) / kUnitsPerPixel, 0));
        end += character.advance;
    };
    const Character& ellipsis = Look(m_latin, QChar(0x2026));
    const qint64 last = qint64(room) * kUnitsPerPixel - ellipsis.advance;
    for (QChar letter : text) {
        const Character& character = Look(m_latin, letter);
        if (character.glyph == 0)
            return false;
        if (elided && end + character.advance >= last)
            break;
        append(character);
    }
    if (elided) {
        if (ellipsis.glyph == 0)
            return false;
        if (last < 0)
            return true;
        append(ellipsis);
    }
    QGlyphRun run;
    run.setRawFont(m_fontGlyphs);
    run.setRawData(glyphs.data(), places.data(), static_cast<int>(glyphs.size()));
    painter.drawGlyphRun(start, run);
    return true;
}

QString CMeasuredFont::OneLine(const QString& text) {
    if (std::none_of(text.begin(), text.end(), IsBlankOnScreen))
        return text;
    QString line = text;
    std::replace_if(line.begin(), line.end(), IsBlankOnScreen, QChar(u' '));
    return line;
}
