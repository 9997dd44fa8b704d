#include "base/SizeText.h"

QString SizeText(std::uint64_t bytes) {
    constexpr std::uint64_t kKilo = 1024;
    constexpr std::uint64_t kMega = kKilo * kKilo;
    if (bytes < kKilo)
        return QString::number(bytes) + QStringLiteral(" B");
    const auto size = static_cast<double>(bytes);
    if (bytes < kMega)
        return QString::number(size / kKilo, 'f', 2) + QStringLiteral(" KB");
    return QString::number(size / kMega, 'f', 2) + QStringLiteral(" MB");
}
