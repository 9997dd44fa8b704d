#pragma once

#include <QString>

/// The default folder of My Collection, in the user's music folder. It is made if it is missing;
/// empty where that can't be done.
[[nodiscard]] QString MakeDefaultCollectionFolder();
