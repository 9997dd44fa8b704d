#pragma once

#include <QStringView>

/// The whole number at the head of a text: blanks, a sign and decimal digits; what follows does not
/// count. 0 if there is none; numbers beyond 32 bits are the nearest that fits.
[[nodiscard]] int DecimalValue(QStringView text);
