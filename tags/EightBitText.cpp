#include "tags/EightBitText.h"

#include <algorithm>
#include <array>

namespace {

// Windows-1252 from 0x80 to 0x9F (Unicode's mapping table CP1252.TXT).
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool InUpperControls(QChar unit) {
    return unit.unicode() >= 0x80 && unit.unicode() <= 0x9F;
}

} // namespace

QString FromEightBit(QByteArrayView bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& unit : text) {
        if (InUpperControls(unit))
            unit = kWindows1252[unit.unicode() - 0x80];
    }
    return text;
}

bool FitsEightBit(QStringView text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar unit) { return unit.unicode() <= 0xFF && !InUpperControls(unit); });
}
