#pragma once

#include "grid/GridTypes.h"

#include <QStringView>

/// Compares the texts of two cells without regard to case. -1, 0 or 1; 0 if either is null.
[[nodiscard]] int CompareTexts(const CGridCellBase* first, const CGridCellBase* second, qintptr);

/// Compares the texts of two cells as numbers (LeadingNumber). -1, 0 or 1; 0 if either is null.
[[nodiscard]] int CompareNumbers(const CGridCellBase* first, const CGridCellBase* second, qintptr);

/// The number that a text begins with, in the manner of C's strtol: blanks, a sign, decimal
/// digits; held at the ends of the 32-bit range. 0 where there is none.
[[nodiscard]] qint32 LeadingNumber(QStringView text);
