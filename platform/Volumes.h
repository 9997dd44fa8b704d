#pragma once

#include <QString>

#include <vector>

/// Where the user's own volumes (sticks, cards, other disks) are mounted: what the mount table
/// lists under /media, /run/media or /mnt, each path once and in the table's order.
///
/// Only the table is read, so a volume that doesn't answer holds nobody up. Empty if the table
/// can't be read. Thread: any.
[[nodiscard]] std::vector<QString>
ListUserVolumes(const QString& mountTable = QStringLiteral("/proc/self/mounts"));
