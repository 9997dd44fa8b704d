#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

/// A store of typed values under key paths ("Settings/AutoCopy"), kept in one file in INI form.
///
/// A damaged file reads as an empty store. It is never overwritten: the next Commit() sets it aside
/// under its name with ".damaged" and, where that is taken, a number behind it.
///
/// Thread:   one at a time.
/// Lifetime: opened for one load or one save; reads see the file as it was at construction.
/// Errors:   reads answer with nothing, writes are reported by Commit().
class CKeyValueStore {
public:
    explicit CKeyValueStore(const QString& file);

    /// True if the store was there, though it may hold nothing.
    [[nodiscard]] bool Exists() const { return m_bExists; }

    /// Nothing if the value is missing or is no 32-bit number.
    [[nodiscard]] std::optional<int> ReadInt(const QString& key) const;

    /// Nothing if the value is missing, is no text, or is longer than `maxLength` UTF-16 units.
    [[nodiscard]] std::optional<QString> ReadText(const QString& key, qsizetype maxLength) const;

    void WriteInt(const QString& key, int value);

    /// Any text comes back unit for unit, names of files that are not valid Unicode included.
    void WriteText(const QString& key, const QString& text);

    /// Brings the written values to the disk, the file being replaced as a whole. Makes the folder
    /// if it is missing. False if that failed.
    bool Commit();

private:
    QString m_strFile;
    QVariantMap m_values;
    QVariantMap m_written;
    bool m_bDamaged = false;
    bool m_bExists = false;
};
