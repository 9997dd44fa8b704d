#pragma once

#include <QString>

/// Makes the fixed folder `name` for scratch files in the temporary folder ($TMPDIR, else /tmp) and
/// returns its path. What an earlier run left in it is removed.
///
/// The folder is readable by the user alone (mode 0700). A folder of that name that is a link or
/// belongs to somebody else is left alone; then the user's number is appended to the name. Empty if
/// that can't be had either.
[[nodiscard]] QString MakeScratchFolder(const QString& name);
