#include "platform/Volumes.h"

#include "platform/Path.h"

#include <mntent.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

namespace {

bool IsUserVolume(const QString& path) {
    const auto places = {QStringLiteral("/media/"), QStringLiteral("/run/media/"),
                         QStringLiteral("/mnt/")};
    return path == QStringLiteral("/mnt") || std::ranges::any_of(places, [&](const QString& place) {
               return path.startsWith(place);
           });
}

} // namespace

std::vector<QString> ListUserVolumes(const QString& mountTable) {
    std::vector<QString> volumes;
    const std::unique_ptr<FILE, int (*)(FILE*)> table(
        ::setmntent(Path::ToBytes(mountTable).constData(), "re"), &::endmntent);
    if (!table)
        return volumes;
    mntent entry{};
    std::array<char, 8192> text{};
    while (::getmntent_r(table.get(), &entry, text.data(), text.size())) {
        const QString path = Path::FromBytes(entry.mnt_dir);
        if (IsUserVolume(path) && std::ranges::find(volumes, path) == volumes.end())
            volumes.push_back(path);
    }
    return volumes;
}
