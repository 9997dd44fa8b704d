#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <vector>

/// Looking at files and folders by the system's own calls.
///
/// Paths are texts as in Path.h. All functions may be called on any thread and answer failures with
/// an empty value; none throws.

/// Owner of an open file descriptor.
class CFileDescriptor {
public:
    explicit CFileDescriptor(int fd = -1)
        : m_fd(fd) {}
    CFileDescriptor(CFileDescriptor&& other) noexcept
        : m_fd(other.Release()) {}
    CFileDescriptor& operator=(CFileDescriptor&& other) noexcept;
    CFileDescriptor(const CFileDescriptor&) = delete;
    CFileDescriptor& operator=(const CFileDescriptor&) = delete;
    ~CFileDescriptor() { Close(); }

    [[nodiscard]] int Get() const { return m_fd; }
    [[nodiscard]] bool IsOpen() const { return m_fd >= 0; }
    [[nodiscard]] int Release();
    void Close();

private:
    int m_fd;
};

/// What makes a file or folder itself, by whatever path it is reached.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

enum class FileKind { Regular, Folder, Other };

struct FileStatus {
    FileKind kind = FileKind::Other;
    std::uint64_t size = 0; ///< bytes
    FileIdentity identity;
};

/// Status of what the path leads to, links followed.
[[nodiscard]] std::optional<FileStatus> GetFileStatus(const QString& path);

/// Whether a path whose last name is a symbolic link leads where the link points, or nowhere.
enum class Links { Follow, Refuse };

/// Opens a regular file for reading. Anything else (a pipe, a device, a folder) stays closed, and
/// the call never waits for a writer at the other end of a pipe.
[[nodiscard]] CFileDescriptor OpenForReading(const QString& path, Links links = Links::Follow);

/// The content of a regular file. Nothing if it can't be read or is larger than `maxSize` bytes.
[[nodiscard]] std::optional<QByteArray> ReadWholeFile(const QString& path, qsizetype maxSize,
                                                      Links links = Links::Follow);

/// Up to `size` bytes of an open file from `position` on, fewer at its end or after an error.
[[nodiscard]] QByteArray ReadAt(int file, std::uint64_t position, std::uint64_t size);

/// Writes all bytes at the file's position; false when the system takes no more.
[[nodiscard]] bool WriteAll(int file, QByteArrayView bytes);

/// A name in a folder. The kind is what the name leads to, links followed; a link that leads
/// nowhere is `Other`.
struct FolderEntry {
    QString name;
    FileKind kind = FileKind::Other;
};

/// The names in a folder in the order in which the system returns them, without "." and "..".
/// Nothing if the folder can't be opened.
[[nodiscard]] std::optional<std::vector<FolderEntry>> ListFolder(const QString& path);

/// Makes a folder and the parents that it lacks. True if the folder is there afterwards.
bool MakeFolder(const QString& path);

enum class NewFolder { Made, NameTaken, Failed };

/// Makes one folder, in a folder that is there, under a name that nothing has yet.
[[nodiscard]] NewFolder MakeNewFolder(const QString& path);

/// Gives a file or folder another path on the same volume. What has that path already is never
/// replaced: then nothing is done. True if it was moved.
[[nodiscard]] bool MoveToFreePath(const QString& from, const QString& to);

/// Deletes a file, or the link that leads to one. True if it is gone afterwards, as when there was
/// none. A folder is never deleted.
[[nodiscard]] bool DeleteFile(const QString& path);
