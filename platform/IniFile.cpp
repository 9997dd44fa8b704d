#include "platform/IniFile.h"

#include "platform/Files.h"

#include <QStringDecoder>
#include <QStringTokenizer>

#include <algorithm>
#include <limits>
#include <optional>
#include <set>

namespace {

constexpr qsizetype kLargestFile = 4 << 20;

QString ReadFileText(const QString& path, qsizetype maxSize) {
    const std::optional<QByteArray> bytes = ReadWholeFile(path, maxSize);
    if (!bytes)
        return {};
    const auto encoding = QStringConverter::encodingForData(*bytes);
    return QStringDecoder(encoding.value_or(QStringConverter::Utf8)).decode(*bytes);
}

bool IsSame(QStringView left, QStringView right) {
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

QStringView WithoutQuotes(QStringView value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

/// What stands between the brackets. Nothing if the second one is missing: such a section has no
/// name.
std::optional<QStringView> SectionName(QStringView line) {
    const qsizetype end = line.indexOf(u']');
    return end > 0 ? std::optional(line.sliced(1, end - 1).trimmed()) : std::nullopt;
}

/// Calls `onSection(name)` for each section and `onValue(key, value)` for each line of the form
/// key=value, in the order of the text, until one of them returns false.
template <class OnSection, class OnValue>
void Parse(QStringView text, OnSection onSection, OnValue onValue) {
    for (const QStringView untrimmed : QStringTokenizer(text, u'\n')) {
        const QStringView line = untrimmed.trimmed();
        if (line.isEmpty() || line.startsWith(u';'))
            continue;
        const qsizetype equals = line.indexOf(u'=');
        bool goesOn = true;
        if (line.startsWith(u'['))
            goesOn = onSection(SectionName(line));
        else if (equals >= 0)
            goesOn = onValue(line.first(equals).trimmed(),
                             WithoutQuotes(line.sliced(equals + 1).trimmed()));
        if (!goesOn)
            return;
    }
}

std::optional<QStringView> FindValue(QStringView text, QStringView section, QStringView key) {
    bool inSection = false;
    std::optional<QStringView> found;
    Parse(
        text,
        [&](std::optional<QStringView> name) {
            const bool wasInSection = inSection;
            inSection = name && IsSame(*name, section);
            return !wasInSection;
        },
        [&](QStringView name, QStringView value) {
            if (inSection && IsSame(name, key))
                found = value;
            return !found;
        });
    return found;
}

int LeadingInteger(QStringView value) {
    const bool negative = value.startsWith(u'-');
    qint64 number = 0;
    for (const QChar digit : value.sliced(negative || value.startsWith(u'+') ? 1 : 0)) {
        if (digit < u'0' || digit > u'9' || number > std::numeric_limits<int>::max())
            break;
        number = 10 * number + (digit.unicode() - u'0');
    }
    return static_cast<int>(std::clamp<qint64>(negative ? -number : number,
                                               std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

} // namespace

bool CIniContent::IsBefore::operator()(const Name& left, const Name& right) const {
    const int order = left.first.compare(right.first, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : left.second.compare(right.second, Qt::CaseInsensitive) < 0;
}

CIniContent::CIniContent(QString text)
    : m_strText(std::move(text)) {
    const auto isBefore = [](QStringView left, QStringView right) {
        return left.compare(right, Qt::CaseInsensitive) < 0;
    };
    std::set<QStringView, decltype(isBefore)> seen(isBefore);
    std::optional<QStringView> section;
    Parse(
        m_strText,
        [&](std::optional<QStringView> name) {
            section = name && seen.insert(*name).second ? name : std::nullopt;
            return true;
        },
        [&](QStringView key, QStringView value) {
            if (section)
                m_values.try_emplace({*section, key}, value);
            return true;
        });
}

QString CIniContent::ReadText(QStringView section, QStringView key, const QString& fallback,
                              qsizetype maxLength) const {
    const auto found = m_values.find({section, key});
    return (found != m_values.end() ? found->second.toString() : fallback).left(maxLength);
}

int CIniContent::ReadInteger(QStringView section, QStringView key, int fallback) const {
    const auto found = m_values.find({section, key});
    const bool hasValue = found != m_values.end() && !found->second.isEmpty();
    return hasValue ? LeadingInteger(found->second) : fallback;
}

QString CIniFile::ReadText(QStringView section, QStringView key, const QString& fallback,
                           qsizetype maxLength) const {
    const QString text = ReadFileText(m_strPath, kLargestFile);
    const auto value = FindValue(text, section, key);
    return (value ? value->toString() : fallback).left(maxLength);
}

CIniContent CIniFile::ReadAll(qsizetype maxSize) const {
    return CIniContent(ReadFileText(m_strPath, maxSize));
}
