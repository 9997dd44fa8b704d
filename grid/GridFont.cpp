#include "grid/GridFont.h"

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

GridFont::GridFont(const QFont& font)
    : m_fontShaped(font)
    , m_fontPlain(Unshaped(font))
    , m_metricsShaped(m_fontShaped)
    , m_metricsPlain(m_fontPlain)
    , m_nHeight(static_cast<int>(std::ceil(m_metricsPlain.height())))
    , m_nAscent(static_cast<int>(std::ceil(m_metricsPlain.ascent())))
    , m_latin(AdvancesFor(QChar(u'x'))) {}

GridFont::TextSize GridFont::Measure(const QString& text) const {
    Advances* run = &m_latin;
    bool letterSeen = false;
    qint64 sum = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qint32 advance = Advance(*run, text[i]);
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
        run = &AdvancesFor(text[i]);
        if (letterSeen) {
            sum += Advance(*run, text[i]);
        } else {
            letterSeen = true;
            sum = 0;
            i = -1;
        }
    }
    return {static_cast<int>((sum + kUnitsPerPixel - 1) / kUnitsPerPixel), false};
}

GridFont::Advances& GridFont::AdvancesFor(QChar letter) const {
    Advances& run = m_runs[RunScript(letter)];
    if (run.letter.isNull())
        run.letter = letter;
    return run;
}

inline qint32 GridFont::Advance(Advances& run, QChar character) const {
    std::unique_ptr<Page>& page = run.pages[character.row()];
    if (!page) {
        page = std::make_unique<Page>();
        page->fill(kUnknown);
    }
    qint32& advance = (*page)[character.cell()];
    if (advance == kUnknown)
        advance = MeasureCharacter(run, character);
    return advance;
}

qint32 GridFont::MeasureCharacter(const Advances& run, QChar character) const {
    if (IsBlankOnScreen(character))
        character = QChar(u' ');
    if (!IsSimple(character))
        return kLayout;
    if (character.script() != QChar::Script_Common)
        return RunScript(character) == RunScript(run.letter) ? Units(character) : kOtherScript;
    return Units(QString(run.letter) + character) - Units(run.letter);
}

qint32 GridFont::Units(const QString& text) const {
    return static_cast<qint32>(
        std::lround(m_metricsPlain.horizontalAdvance(text) * kUnitsPerPixel));
}

GridFont::TextSize GridFont::MeasureLayout(const QString& text) const {
    return {static_cast<int>(std::ceil(m_metricsShaped.horizontalAdvance(OneLine(text)))), true};
}

QString GridFont::OneLine(const QString& text) {
    if (std::none_of(text.begin(), text.end(), IsBlankOnScreen))
        return text;
    QString line = text;
    std::replace_if(line.begin(), line.end(), IsBlankOnScreen, QChar(u' '));
    return line;
}
