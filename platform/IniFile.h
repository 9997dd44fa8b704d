#pragma once

#include <QString>

/// Reader of files in INI form with the answers of the private-profile routines: sections in
/// brackets, lines of the form key=value.
///
/// Sections and keys are compared without regard to case, and blanks around them don't count. The
/// first section of a name and the first line of a key win. Blanks around a value are cut, then
/// one pair of equal quotes (' or ") around it. A line that starts with ';' is a comment. Lines end
/// with LF or CR LF. The text is UTF-8, or UTF-16 behind a byte-order mark.
///
/// Nothing is kept: each question reads the file, so a change of the file shows at once.
///
/// Thread: any. Errors: what can't be read, is no regular file, or is larger than 4 MB reads as an
/// empty file.
class IniFile {
public:
    explicit IniFile(QString path)
        : m_strPath(std::move(path)) {}

    /// The value of a key, at most `maxLength` UTF-16 units of it; `fallback` if there is no such
    /// key. A key without text has an empty value.
    [[nodiscard]] QString ReadText(QStringView section, QStringView key, const QString& fallback,
                                   qsizetype maxLength) const;

private:
    QString m_strPath;
};
