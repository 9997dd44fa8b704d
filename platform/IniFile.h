#pragma once

#include <QString>
#include <QStringView>

#include <map>
#include <utility>

/// What a file in INI form held when CIniFile read it, ready for many questions.
///
/// Thread: any. Cost: one look through the text when it is made; a question costs the same however
/// long the text is.
class CIniContent {
public:
    explicit CIniContent(QString text);

    /// As CIniFile::ReadText().
    [[nodiscard]] QString ReadText(QStringView section, QStringView key, const QString& fallback,
                                   qsizetype maxLength) const;

    /// The number at the start of a value: a sign if there is one, then decimal digits; what
    /// follows doesn't count. 0 for a value that does not start so ("0x10" and "ten" alike), the
    /// nearest int for one that no int can hold, and `fallback` if there is no such key or no
    /// value.
    [[nodiscard]] int ReadInteger(QStringView section, QStringView key, int fallback) const;

private:
    using Name = std::pair<QStringView, QStringView>; // section and key

    struct IsBefore {
        bool operator()(const Name& left, const Name& right) const;
    };

    QString m_strText; // the views below look into it; shared by copies
    std::map<Name, QStringView, IsBefore> m_values;
};

/// Reader of files in INI form with the answers of the private-profile routines: sections in
/// brackets, lines of the form key=value.
///
/// Sections and keys are compared without regard to case, and blanks around them don't count. The
/// first section of a name and the first line of a key win. Blanks around a value are cut, then
/// one pair of equal quotes (' or ") around it. A line that starts with ';' is a comment. Lines end
/// with LF or CR LF. The text is UTF-8, or UTF-16 behind a byte-order mark.
///
/// Nothing is kept: each question reads the file, so a change of the file shows at once. Who has
/// many questions reads it once with ReadAll().
///
/// Thread: any. Errors: what can't be read, is no regular file, or is too large (4 MB, where
/// nothing else is said) reads as an empty file.
class CIniFile {
public:
    explicit CIniFile(QString path)
        : m_strPath(std::move(path)) {}

    /// The value of a key, at most `maxLength` UTF-16 units of it; `fallback` if there is no such
    /// key. A key without text has an empty value.
    [[nodiscard]] QString ReadText(QStringView section, QStringView key, const QString& fallback,
                                   qsizetype maxLength) const;

    /// The whole file; an empty one if it is larger than `maxSize` bytes.
    [[nodiscard]] CIniContent ReadAll(qsizetype maxSize) const;

private:
    QString m_strPath;
};
