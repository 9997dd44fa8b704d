#include "base/DecimalValue.h"

#include <QChar>

#include <algorithm>
#include <cstdint>
#include <limits>

int DecimalValue(QStringView text) {
    while (!text.isEmpty() && text.front().isSpace())
        text = text.sliced(1);
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);
    std::int64_t value = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9' || value > std::numeric_limits<int>::max())
            break;
        value = value * 10 + (digit.unicode() - u'0');
    }
    return static_cast<int>(std::clamp<std::int64_t>(negative ? -value : value,
                                                     std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}
