#include "platform/IniFile.h"

#include "platform/Files.h"

#include <QStringDecoder>
#include <QStringTokenizer>

#include <optional>

namespace {

constexpr qsizetype kLargestFile = 4 << 20;

QString ReadFileText(const QString& path) {
    const std::optional<QByteArray> bytes = ReadWholeFile(path, kLargestFile);
    if (!bytes)
        return {};
    const auto encoding = QStringConverter::encodingForData(*bytes);
    return QStringDecoder(encoding.value_or(QStringConverter::Utf8)).decode(*bytes);
}

bool IsSection(QStringView line, QStringView section) {
    if (!line.startsWith(u'['))
        return false;
    const qsizetype end = line.indexOf(u']');
    return end > 0 && line.sliced(1, end - 1).trimmed().compare(section, Qt::CaseInsensitive) == 0;
}

/// The value of a line of the form key=value, if it is a line of this key.
std::optional<QStringView> ValueOf(QStringView line, QStringView key) {
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0 || line.first(equals).trimmed().compare(key, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    return line.sliced(equals + 1).trimmed();
}

QStringView WithoutQuotes(QStringView value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

std::optional<QStringView> FindValue(QStringView text, QStringView section, QStringView key) {
    bool inSection = false;
    for (const QStringView untrimmed : QStringTokenizer(text, u'\n')) {
        const QStringView line = untrimmed.trimmed();
        if (line.isEmpty() || line.startsWith(u';'))
            continue;
        if (line.startsWith(u'[')) {
            if (inSection)
                return std::nullopt;
            inSection = IsSection(line, section);
        } else if (inSection) {
            if (const auto value = ValueOf(line, key))
                return WithoutQuotes(*value);
        }
    }
    return std::nullopt;
}

} // namespace

QString IniFile::ReadText(QStringView section, QStringView key, const QString& fallback,
                          qsizetype maxLength) const {
    const QString text = ReadFileText(m_strPath);
    const auto value = FindValue(text, section, key);
    return (value ? value->toString() : fallback).left(maxLength);
}
