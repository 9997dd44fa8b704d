#pragma once

#include <QByteArrayView>
#include <QString>

/// The 8-bit text of ID3 tags.
///
/// The format says ISO 8859-1, and most programs write Windows-1252, which differs only in
/// 0x80..0x9F, where ISO 8859-1 has control characters. So text is read as Windows-1252, in
/// every locale, and only text of which the two make the same is written in 8 bits.

/// Decodes Windows-1252; its five unused bytes become the control character of the same number.
[[nodiscard]] QString FromEightBit(QByteArrayView bytes);

/// Whether every program reads `text.toLatin1()` back as `text`.
[[nodiscard]] bool FitsEightBit(QStringView text);
