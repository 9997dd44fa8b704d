#pragma once

#include <QIcon>
#include <QList>

/// The pictures of the grid's rows, 16 by 16: the first ones by the type of a list (phone,
/// collection, all music, CD), then a track, a playlist, the selection, and a list that
/// plays.
[[nodiscard]] QList<QIcon> MakeRowImages();
