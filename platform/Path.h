#pragma once

#include <QByteArray>
#include <QString>

/// Names of files, as bytes on disk and as text in the program.
///
/// A name on disk is bytes, in no promised encoding. In the program a path is a QString: valid
/// UTF-8 is decoded, and each byte that is not part of valid UTF-8 becomes the lone surrogate
/// U+DC80..U+DCFF that holds it in its low 8 bits (the scheme of PEP 383). The way back yields the
/// very same bytes, so a file with any name can be opened and found again.
///
/// All functions are pure and may be called on any thread.
namespace Path {

[[nodiscard]] QString FromBytes(QByteArrayView bytes);

/// The bytes of a path as the system calls take them. Surrogates that stand for no byte (they can
/// only come from a text that was cut in the middle of a character) are encoded as '?'.
[[nodiscard]] QByteArray ToBytes(QStringView path);

/// The text to show a person: what can't be decoded is U+FFFD.
[[nodiscard]] QString ForDisplay(const QString& path);

/// The part behind the last '/', the whole text if there is none.
[[nodiscard]] QString FileName(const QString& path);

/// The part before the last '/', without it; empty if there is none.
[[nodiscard]] QString Folder(const QString& path);

/// The text behind the last point of the file name, as written; empty if there is no point.
[[nodiscard]] QString Extension(const QString& path);

/// The file name up to its last point.
[[nodiscard]] QString BaseName(const QString& path);

/// `folder` and `name` with exactly one '/' between them.
[[nodiscard]] QString Join(const QString& folder, const QString& name);

} // namespace Path
