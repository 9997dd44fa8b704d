#include "platform/FileReplacement.h"

#include "platform/Path.h"

#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr std::uint64_t kBlock = 256ULL * 1024;

bool CopyByHand(int from, std::uint64_t begin, std::uint64_t size, int to) {
    while (size > 0) {
        const QByteArray block = ReadAt(from, begin, std::min(size, kBlock));
        if (block.isEmpty() || !WriteAll(to, block))
            return false;
        begin += static_cast<std::uint64_t>(block.size());
        size -= static_cast<std::uint64_t>(block.size());
    }
    return true;
}

/// An attribute that carries the user's data or rights has to come along. Labels that the system
/// sets by itself ("security.", "trusted.") may be refused to us.
bool MayBeLeft(const char* attribute) {
    return std::strncmp(attribute, "user.", 5) != 0 && std::strcmp(attribute, kAccessList) != 0;
}

bool CopyAttribute(int from, int to, const char* name) {
    const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
    if (size < 0)
        return MayBeLeft(name);
    std::vector<char> value(static_cast<std::size_t>(size));
    const ssize_t got = ::fgetxattr(from, name, value.data(), value.size());
    return (got == size && ::fsetxattr(to, name, value.data(), value.size(), 0) == 0) ||
           MayBeLeft(name);
}

bool CopyAttributes(int from, int to) {
    ::fremovexattr(to, kAccessList); // it may have one from the folder
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    if (size <= 0)
        return size == 0 || errno == ENOTSUP;
    std::string names(static_cast<std::size_t>(size), '\0');
    if (::flistxattr(from, names.data(), names.size()) != size)
        return false;
    for (std::size_t begin = 0; begin < names.size(); begin = names.find('\0', begin) + 1) {
        if (!CopyAttribute(from, to, names.c_str() + begin))
            return false;
    }
    return true;
}

/// Owner first: a change of owner takes rights away.
bool CopyOwnerAndMode(const struct stat& from, int to) {
    struct stat status {};
    if (::fstat(to, &status) != 0)
        return false;
    if ((status.st_uid != from.st_uid || status.st_gid != from.st_gid) &&
        ::fchown(to, from.st_uid, from.st_gid) != 0)
        return false;
    return ::fchmod(to, from.st_mode & 07777) == 0;
}

/// The path with all links followed; nothing where it leads to nothing.
std::optional<QString> Resolve(const QString& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(
        ::realpath(Path::ToBytes(path).constData(), nullptr), &std::free);
    if (!resolved)
        return std::nullopt;
    return Path::FromBytes(resolved.get());
}

bool NameIsTaken(const QString& path) {
    struct stat status {};
    return ::lstat(Path::ToBytes(path).constData(), &status) == 0 || errno != ENOENT;
}

bool SameTime(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

void SyncFolder(const QString& folder) {
    const CFileDescriptor opened(::open(Path::ToBytes(Path::Join(folder, QString())).constData(),
                                        O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        ::fsync(opened.Get());
}

} // namespace

std::optional<CFileReplacement> CFileReplacement::Begin(const QString& path) {
    const std::optional<QString> resolved = Resolve(path);
    if (!resolved)
        return std::nullopt;
    CFileReplacement replacement;
    replacement.m_strPath = *resolved;
    replacement.m_original = OpenForReading(replacement.m_strPath);
    // A file system that counts no names reports 0.
    if (!replacement.m_original.IsOpen() ||
        ::fstat(replacement.m_original.Get(), &replacement.m_status) != 0 ||
        replacement.m_status.st_nlink > 1 ||
        ::faccessat(AT_FDCWD, Path::ToBytes(replacement.m_strPath).constData(), W_OK, AT_EACCESS) !=
            0 ||
        !replacement.OpenNewFile(S_IRUSR | S_IWUSR))
        return std::nullopt;
    return replacement;
}

std::optional<CFileReplacement> CFileReplacement::BeginOrCreate(const QString& path) {
    if (NameIsTaken(path))
        return Begin(path);
    const QString folder = Path::Folder(path);
    const std::optional<QString> resolved =
        Resolve(folder.isEmpty() && !path.startsWith(u'/') ? QStringLiteral(".")
                                                           : Path::Join(folder, QString()));
    if (!resolved || Path::FileName(path).isEmpty())
        return std::nullopt;
    CFileReplacement creation;
    creation.m_strPath = Path::Join(*resolved, Path::FileName(path));
    constexpr mode_t kNewFile = 0666; // less what the user's mask takes away
    if (!creation.OpenNewFile(kNewFile))
        return std::nullopt;
    return creation;
}

CFileReplacement::CFileReplacement(CFileReplacement&& other) noexcept
    : m_strPath(std::move(other.m_strPath))
    , m_strNewPath(std::exchange(other.m_strNewPath, QString()))
    , m_original(std::move(other.m_original))
    , m_new(std::move(other.m_new))
    , m_status(other.m_status) {}

CFileReplacement::~CFileReplacement() {
    if (!m_strNewPath.isEmpty())
        ::unlink(Path::ToBytes(m_strNewPath).constData());
}

bool CFileReplacement::OpenNewFile(mode_t mode) {
    const QString name =
        QStringLiteral(".trackdeck-new-%1").arg(QRandomGenerator::system()->generate64(), 0, 16);
    const QString path = Path::Join(Path::Folder(m_strPath), name);
    m_new = CFileDescriptor(::open(Path::ToBytes(path).constData(),
                                   O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
    if (!m_new.IsOpen())
        return false;
    m_strNewPath = path;
    return true;
}

bool CFileReplacement::Append(QByteArrayView bytes) {
    return WriteAll(m_new.Get(), bytes);
}

bool CFileReplacement::AppendOriginal(std::uint64_t begin, std::uint64_t size) {
    auto position = static_cast<off_t>(begin);
    while (size > 0) {
        // The kernel shares extents where the file system can, and copies within it elsewhere.
        const ssize_t copied = ::copy_file_range(m_original.Get(), &position, m_new.Get(), nullptr,
                                                 static_cast<std::size_t>(size), 0);
        if (copied < 0 && (errno == ENOSPC || errno == EFBIG || errno == EIO || errno == EDQUOT))
            return false;
        if (copied <= 0)
            return CopyByHand(m_original.Get(), static_cast<std::uint64_t>(position), size,
                              m_new.Get());
        size -= static_cast<std::uint64_t>(copied);
    }
    return true;
}

std::uint64_t CFileReplacement::OriginalSize() const {
    return static_cast<std::uint64_t>(m_status.st_size);
}

bool CFileReplacement::MatchesOriginal(std::uint64_t newBegin, std::uint64_t begin,
                                       std::uint64_t size) const {
    const CFileDescriptor written = OpenForReading(m_strNewPath);
    for (std::uint64_t done = 0; done < size; done += kBlock) {
        const std::uint64_t part = std::min(size - done, kBlock);
        const QByteArray ours = ReadAt(written.Get(), newBegin + done, part);
        if (static_cast<std::uint64_t>(ours.size()) != part ||
            ours != ReadAt(m_original.Get(), begin + done, part))
            return false;
    }
    return true;
}

bool CFileReplacement::OriginalIsUnchanged() const {
    if (!m_original.IsOpen())
        return !NameIsTaken(m_strPath);
    struct stat now {};
    return ::stat(Path::ToBytes(m_strPath).constData(), &now) == 0 &&
           now.st_dev == m_status.st_dev && now.st_ino == m_status.st_ino &&
           now.st_size == m_status.st_size && SameTime(now.st_mtim, m_status.st_mtim) &&
           SameTime(now.st_ctim, m_status.st_ctim);
}

bool CFileReplacement::TakeOriginalAttributes(int file) const {
    return !m_original.IsOpen() ||
           (CopyAttributes(m_original.Get(), file) && CopyOwnerAndMode(m_status, file));
}

bool CFileReplacement::Commit() {
    // Opened again: a library that edits by name may have made another file of that name.
    const QByteArray newPath = Path::ToBytes(m_strNewPath);
    const CFileDescriptor edited(::open(newPath.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
    if (!edited.IsOpen() || !TakeOriginalAttributes(edited.Get()) || ::fsync(edited.Get()) != 0 ||
        !OriginalIsUnchanged() ||
        ::rename(newPath.constData(), Path::ToBytes(m_strPath).constData()) != 0)
        return false;
    m_strNewPath.clear();
    SyncFolder(Path::Folder(m_strPath));
    return true;
}
