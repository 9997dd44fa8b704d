#include "platform/Files.h"

#include "platform/Path.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

FileKind KindOf(mode_t mode) {
    if (S_ISREG(mode))
        return FileKind::Regular;
    return S_ISDIR(mode) ? FileKind::Folder : FileKind::Other;
}

/// A directory read tells the kind for nothing on most file systems; links and the rest are asked.
FileKind KindOf(const dirent& entry, int folder) {
    if (entry.d_type == DT_REG)
        return FileKind::Regular;
    if (entry.d_type == DT_DIR)
        return FileKind::Folder;
    struct stat status {};
    if (::fstatat(folder, entry.d_name, &status, 0) != 0)
        return FileKind::Other;
    return KindOf(status.st_mode);
}

} // namespace

CFileDescriptor& CFileDescriptor::operator=(CFileDescriptor&& other) noexcept {
    if (this != &other) {
        Close();
        m_fd = other.Release();
    }
    return *this;
}

int CFileDescriptor::Release() {
    return std::exchange(m_fd, -1);
}

void CFileDescriptor::Close() {
    if (m_fd >= 0)
        ::close(Release());
}

std::optional<FileStatus> GetFileStatus(const QString& path) {
    struct stat status {};
    if (::stat(Path::ToBytes(path).constData(), &status) != 0)
        return std::nullopt;
    return FileStatus{KindOf(status.st_mode),
                      static_cast<std::uint64_t>(status.st_size),
                      {status.st_dev, status.st_ino}};
}

CFileDescriptor OpenForReading(const QString& path, Links links) {
    const int noLink = links == Links::Refuse ? O_NOFOLLOW : 0;
    CFileDescriptor file(::open(Path::ToBytes(path).constData(),
                                O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | noLink));
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return CFileDescriptor();
    return file;
}

QByteArray ReadAt(int file, std::uint64_t position, std::uint64_t size) {
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t got =
            ::pread(file, bytes.data() + done, static_cast<std::size_t>(bytes.size() - done),
                    static_cast<off_t>(position) + done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += got;
    }
    bytes.truncate(done);
    return bytes;
}

bool WriteAll(int file, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(file, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

std::optional<QByteArray> ReadWholeFile(const QString& path, qsizetype maxSize, Links links) {
    const CFileDescriptor file = OpenForReading(path, links);
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0 || status.st_size > maxSize)
        return std::nullopt;
    QByteArray content = ReadAt(file.Get(), 0, static_cast<std::uint64_t>(status.st_size));
    return content.size() == status.st_size ? std::optional(std::move(content)) : std::nullopt;
}

std::optional<std::vector<FolderEntry>> ListFolder(const QString& path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(Path::ToBytes(path).constData()),
                                                     &::closedir);
    if (!folder)
        return std::nullopt;
    std::vector<FolderEntry> entries;
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            entries.push_back({Path::FromBytes(name), KindOf(*entry, ::dirfd(folder.get()))});
    }
    return entries;
}

bool MakeFolder(const QString& path) {
    std::error_code failure;
    const std::filesystem::path folder = Path::ToBytes(path).toStdString();
    std::filesystem::create_directories(folder, failure);
    return std::filesystem::is_directory(folder, failure);
}

NewFolder MakeNewFolder(const QString& path) {
    if (::mkdir(Path::ToBytes(path).constData(), 0777) == 0)
        return NewFolder::Made;
    return errno == EEXIST ? NewFolder::NameTaken : NewFolder::Failed;
}

bool MoveToFreePath(const QString& from, const QString& to) {
    const QByteArray source = Path::ToBytes(from);
    const QByteArray target = Path::ToBytes(to);
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) ==
        0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    // A file system that has no such rename, as some over the network. The gap between the two
    // calls can cost no more than an empty folder of the same name.
    struct stat status {};
    return ::lstat(target.constData(), &status) != 0 && errno == ENOENT &&
           ::rename(source.constData(), target.constData()) == 0;
}

bool DeleteFile(const QString& path) {
    return ::unlink(Path::ToBytes(path).constData()) == 0 || errno == ENOENT;
}
