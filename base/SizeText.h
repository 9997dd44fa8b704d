#pragma once

#include <QString>

#include <cstdint>

/// A size for people: "1023 B" below 1 KB, "1.00 KB" below 1 MB, else "1.00 MB" (binary units, a
/// point before the decimals in every locale).
[[nodiscard]] QString SizeText(std::uint64_t bytes);
