#include "grid/GridCompare.h"

#include "grid/GridCellBase.h"

#include <algorithm>
#include <limits>

namespace {

template <class T>
int Order(T first, T second) {
    return first < second ? -1 : first > second;
}

} // namespace

int CompareTexts(const CGridCellBase* first, const CGridCellBase* second, qintptr) {
    if (!first || !second)
        return 0;
    return Order(first->GetText().compare(second->GetText(), Qt::CaseInsensitive), 0);
}

int CompareNumbers(const CGridCellBase* first, const CGridCellBase* second, qintptr) {
    if (!first || !second)
        return 0;
    return Order(LeadingNumber(first->GetText()), LeadingNumber(second->GetText()));
}

qint32 LeadingNumber(QStringView text) {
    auto at = std::find_if(text.begin(), text.end(), [](QChar c) { return !c.isSpace(); });
    const bool negative = at != text.end() && *at == u'-';
    if (at != text.end() && (*at == u'-' || *at == u'+'))
        ++at;
    constexpr qint64 kMost = std::numeric_limits<qint32>::max();
    qint64 number = 0;
    for (; at != text.end() && *at >= u'0' && *at <= u'9'; ++at)
        number = std::min(number * 10 + (at->unicode() - u'0'), kMost + 1);
    return static_cast<qint32>(negative ? -number : std::min(number, kMost));
}
