#pragma once

#include "platform/Files.h"

#include <QByteArrayView>
#include <QString>

#include <sys/stat.h>

#include <cstdint>
#include <optional>

/// A user's file is never edited in place: a new one is made beside it and takes its name at once.
/// Whatever happens in between (a full disk, a kill, power gone), the name leads to the old file
/// or to the new one, and either is complete.
///
/// The new file has a name that no scan takes for music. Parts of the old file are added without
/// being copied where the file system can share them. Mode, owner, access list and extended
/// attributes are those of the old file. A link is followed: what it leads to is replaced.
///
/// Refused from the start: what is no regular file, what may not be written, and a file with
/// several names, since the others would keep the old content.
///
/// A name that leads to nothing yet can be given to a new file in the same way.
///
/// Thread: any, one at a time. Errors: empty or false; then drop the object, which removes the new
/// file. Never throws.
class CFileReplacement {
public:
    [[nodiscard]] static std::optional<CFileReplacement> Begin(const QString& path);

    /// As Begin where there is a file; else for one that is not there yet, with the mode of any new
    /// file and a Commit that overwrites none.
    [[nodiscard]] static std::optional<CFileReplacement> BeginOrCreate(const QString& path);

    CFileReplacement(CFileReplacement&& other) noexcept;
    CFileReplacement(const CFileReplacement&) = delete;
    CFileReplacement& operator=(const CFileReplacement&) = delete;
    CFileReplacement& operator=(CFileReplacement&&) = delete;
    ~CFileReplacement(); ///< removes the new file unless it was committed

    /// Adds bytes at the end of the new file.
    [[nodiscard]] bool Append(QByteArrayView bytes);

    /// Adds `size` bytes of the old file, from `begin` on; all of it for a library that edits by
    /// name.
    [[nodiscard]] bool AppendOriginal(std::uint64_t begin, std::uint64_t size);

    /// Full path of the new file, to be read or edited before the commit.
    [[nodiscard]] const QString& NewPath() const { return m_strNewPath; }

    [[nodiscard]] std::uint64_t OriginalSize() const;

    /// Descriptor of the old file, open for reading as long as this object lives: what is read
    /// through it belongs to the file that Commit compares with.
    [[nodiscard]] int Original() const { return m_original.Get(); }

    /// Whether the new file holds at `newBegin` the same `size` bytes as the old at `begin`.
    [[nodiscard]] bool MatchesOriginal(std::uint64_t newBegin, std::uint64_t begin,
                                       std::uint64_t size) const;

    /// Puts the new file, as it is on disk now, in the place of the old one; false leaves the old
    /// one there, also when that was changed since Begin.
    [[nodiscard]] bool Commit();

private:
    CFileReplacement() = default;

    [[nodiscard]] bool OpenNewFile(mode_t mode);
    [[nodiscard]] bool TakeOriginalAttributes(int file) const;
    [[nodiscard]] bool OriginalIsUnchanged() const;

    QString m_strPath;          ///< of the old file, links resolved
    QString m_strNewPath;       ///< empty when there is nothing to remove
    CFileDescriptor m_original; ///< not open where a file is created
    CFileDescriptor m_new;
    struct stat m_status {}; ///< of the old file
};
