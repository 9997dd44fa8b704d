#pragma once

#include <QIcon>
#include <QList>

/// Number of the picture of a track among the row pictures.
inline constexpr int kTrackImage = 4;

/// The pictures of the grid's rows, 16 by 16: the first ones by the type of a list (phone,
/// collection, all music, CD), then a track, a playlist, and the selection.
[[nodiscard]] QList<QIcon> MakeRowImages();
