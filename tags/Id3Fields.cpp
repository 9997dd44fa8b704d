#include "tags/Id3Fields.h"

#include "base/DecimalValue.h"
#include "base/SizeText.h"
#include "tags/GenreTable.h"

#include <algorithm>

namespace {

struct FieldRow {
    std::array<const char*, 3> ids; ///< in ID3v2.2, 2.3 and 2.4
    QString CTrackInfo::*text;
};

// In the order of Id3Field.
constexpr std::array<FieldRow, kId3FieldCount> kRows = {{
    {{"TAL", "TALB", "TALB"}, &CTrackInfo::m_strAlbum},
    {{"TP1", "TPE1", "TPE1"}, &CTrackInfo::m_strArtist},
    {{"TBP", "TBPM", "TBPM"}, &CTrackInfo::m_strBPM},
    {{"TCM", "TCOM", "TCOM"}, &CTrackInfo::m_strComposer},
    {{"TLE", "TLEN", "TLEN"}, &CTrackInfo::m_strLength},
    {{"TSI", "TSIZ", "TSIZ"}, &CTrackInfo::m_strSize},
    {{"TT2", "TIT2", "TIT2"}, &CTrackInfo::m_strTitle},
    {{"TRK", "TRCK", "TRCK"}, &CTrackInfo::m_strTrackNumber},
    {{"TYE", "TYER", "TDRC"}, &CTrackInfo::m_strYear},
    {{"TCO", "TCON", "TCON"}, &CTrackInfo::m_strGenre},
}};

const FieldRow& RowOf(Id3Field field) {
    return kRows[static_cast<std::size_t>(field)];
}

/// A number frame counts in 32 bits with a sign; the fields keep it sign-extended.
std::uint64_t SignExtended(QStringView text) {
    return static_cast<std::uint64_t>(std::int64_t{DecimalValue(text)});
}

QString SignedNumber(std::uint64_t value) {
    return QString::number(static_cast<std::int32_t>(value));
}

/// The whole minutes as two 32-bit numbers, low word first: an ID3 length never shows seconds.
QString LengthText(std::uint64_t milliseconds) {
    const std::uint64_t minutes = milliseconds / 1000 / 60;
    return QStringLiteral("%1:%2")
        .arg(static_cast<std::uint32_t>(minutes), 2, 10, QLatin1Char('0'))
        .arg(static_cast<std::uint32_t>(minutes >> 32), 2, 10, QLatin1Char('0'));
}

/// "(17)" and "(17)Rock" name genre 17.
QString GenreName(QString text) {
    if (text.startsWith(u'(') && text.contains(u')')) {
        const int number = DecimalValue(QStringView(text).sliced(1));
        GenreFromId3Number(text, number);
    }
    return text;
}

bool IsNumber(const QString& text) {
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), isDigit);
}

/// yyyy-MM-ddTHH:mm:ss, or the beginning of it.
QString YearOfTime(const QString& time) {
    constexpr qsizetype kYear = 4;
    return time.indexOf(u'-') == kYear ? time.first(kYear) : time;
}

QString GenreText(const QString& name) {
    const int number = GenreToId3Number(name);
    return number < kNoId3Genre ? QStringLiteral("(%1)").arg(number) : name;
}

} // namespace

QByteArrayView Id3FrameId(Id3Field field, int version) {
    return RowOf(field).ids[static_cast<std::size_t>(version - 2)];
}

std::size_t KeepId3Texts(QByteArrayView id) {
    constexpr std::size_t kEnough = 256; // for kMaxId3Text characters in any encoding
    if (id.front() != 'T')
        return 0;
    const auto isId = [id](const char* other) { return id == other; };
    const auto anyIsId = [&isId](const auto& ids) {
        return std::any_of(ids.begin(), ids.end(), isId);
    };
    const bool kept = std::any_of(kId3OtherArtists.begin(), kId3OtherArtists.end(), anyIsId) ||
                      std::any_of(kRows.begin(), kRows.end(),
                                  [&anyIsId](const FieldRow& row) { return anyIsId(row.ids); });
    return kept ? kEnough : 0;
}

QString CutId3Text(QString text) {
    const qsizetype end = text.indexOf(QChar(u'\0'));
    text.truncate(end < 0 ? kMaxId3Text : std::min(end, kMaxId3Text));
    if (!text.isEmpty() && text.back().isHighSurrogate())
        text.chop(1);
    return text;
}

void TakeId3Texts(const Id3Texts& texts, int version, CTrackInfo& info) {
    for (std::size_t i = 0; i < kId3FieldCount; ++i) {
        const std::optional<QString>& text = texts[i];
        if (!text)
            continue;
        switch (static_cast<Id3Field>(i)) {
        case Id3Field::Length:
            info.m_nLengthMs = SignExtended(*text);
            info.m_strLength = LengthText(info.m_nLengthMs);
            break;
        case Id3Field::Size:
            info.m_nSizeBytes = SignExtended(*text);
            info.m_strSize = SizeText(info.m_nSizeBytes);
            break;
        case Id3Field::Genre:
            info.m_strGenre =
                GenreName(version == 4 && IsNumber(*text) ? u'(' + *text + u')' : *text);
            break;
        case Id3Field::Year:
            info.m_strYear = version == 4 ? YearOfTime(*text) : *text;
            break;
        default:
            info.*kRows[i].text = *text;
        }
    }
}

QString Id3FieldText(const CTrackInfo& info, Id3Field field) {
    switch (field) {
    case Id3Field::Length:
        return SignedNumber(info.m_nLengthMs);
    case Id3Field::Size:
        return SignedNumber(info.m_nSizeBytes);
    default:
        break;
    }
    QString text = info.*RowOf(field).text;
    if (field == Id3Field::Genre)
        text = GenreText(text);
    if (const qsizetype nul = text.indexOf(QChar(u'\0')); nul >= 0)
        text.truncate(nul);
    return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
}
