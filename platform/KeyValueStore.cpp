#include "platform/KeyValueStore.h"

#include "platform/Files.h"
#include "platform/Path.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <cstring>

namespace {

/// Far above what a store of options comes to: anything larger is no file of ours.
constexpr qsizetype kLargestFile = 1 << 20;

/// QSettings keeps text as UTF-8, in which lone surrogates have no place; those texts are kept as
/// the bytes of their UTF-16 units.
QVariant ToVariant(const QString& text) {
    if (text.isValidUtf16())
        return text;
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

std::optional<QString> ToText(const QVariant& value) {
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    const QByteArray bytes = value.toByteArray();
    if (value.typeId() != QMetaType::QByteArray || bytes.size() % 2 != 0)
        return std::nullopt;
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), bytes.size());
    return text;
}

/// True if every line is one that a file in INI form can hold. QSettings reports bad lines too,
/// but only the first time that the process reads them.
bool IsIniForm(const QByteArray& content) {
    const QList<QByteArray> lines = content.split('\n');
    return std::all_of(lines.begin(), lines.end(), [](const QByteArray& untrimmed) {
        const QByteArray line = untrimmed.trimmed();
        return line.isEmpty() || line.startsWith(';') || line.startsWith('[') || line.contains('=');
    });
}

/// Gives the file another name, one that is free.
bool SetAside(const QString& file) {
    QString name = file + QStringLiteral(".damaged");
    for (int number = 2; GetFileStatus(name); ++number)
        name = file + QStringLiteral(".damaged%1").arg(number);
    return QFile::rename(file, name);
}

} // namespace

CKeyValueStore::CKeyValueStore(const QString& file)
    : m_strFile(file) {
    if (!GetFileStatus(file))
        return;
    const std::optional<QByteArray> content = ReadWholeFile(file, kLargestFile);
    m_bDamaged = !content || !IsIniForm(*content);
    m_bExists = !m_bDamaged;
    if (m_bDamaged)
        return;
    const QSettings settings(file, QSettings::IniFormat);
    for (const QString& key : settings.allKeys())
        m_values.insert(key, settings.value(key));
}

std::optional<int> CKeyValueStore::ReadInt(const QString& key) const {
    bool isNumber = false;
    const int value = m_values.value(key).toString().toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<QString> CKeyValueStore::ReadText(const QString& key, qsizetype maxLength) const {
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return std::nullopt;
    const auto text = ToText(*found);
    return text && text->size() <= maxLength ? text : std::nullopt;
}

void CKeyValueStore::WriteInt(const QString& key, int value) {
    m_written.insert(key, value);
}

void CKeyValueStore::WriteText(const QString& key, const QString& text) {
    m_written.insert(key, ToVariant(text));
}

bool CKeyValueStore::Commit() {
    if (!MakeFolder(Path::Folder(m_strFile)))
        return false;
    if (m_bDamaged && !SetAside(m_strFile))
        return false;
    QSettings settings(m_strFile, QSettings::IniFormat);
    for (auto entry = m_written.cbegin(); entry != m_written.cend(); ++entry)
        settings.setValue(entry.key(), entry.value());
    settings.sync();
    m_bDamaged = false;
    return settings.status() == QSettings::NoError;
}
