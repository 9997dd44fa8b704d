#include "platform/ScratchFolder.h"

#include "platform/Path.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace {

QString TemporaryFolder() {
    const char* folder = std::getenv("TMPDIR");
    return folder && *folder ? Path::FromBytes(folder) : QStringLiteral("/tmp");
}

/// True if the path is free, or a folder of the user's own that was removed.
bool ClearWay(const QByteArray& path) {
    struct stat status {};
    if (::lstat(path.constData(), &status) != 0)
        return true;
    if (!S_ISDIR(status.st_mode) || status.st_uid != ::getuid())
        return false;
    // Removes links, never what they lead to.
    std::error_code failure;
    std::filesystem::remove_all(path.toStdString(), failure);
    return !failure;
}

} // namespace

QString MakeScratchFolder(const QString& name) {
    const QString path = Path::Join(TemporaryFolder(), name);
    for (const QString& candidate : {path, path + QString::number(::getuid())}) {
        const QByteArray bytes = Path::ToBytes(candidate);
        if (ClearWay(bytes) && ::mkdir(bytes.constData(), 0700) == 0)
            return candidate;
    }
    return {};
}
