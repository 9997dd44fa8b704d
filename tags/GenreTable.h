#pragma once

#include <QString>

/// The numbered genres of ID3: the ID3v1 table with its later extension, 0 to 147, in the
/// published spelling but for 132 "Britpop" and 144 "Trash Metal".

/// Answer of GenreToId3Number for a name that has no number.
constexpr int kNoId3Genre = 255;

/// The number of the first genre of this name, compared without regard to case.
[[nodiscard]] int GenreToId3Number(const QString& name);

/// Puts the name of genre `number` into `name`; leaves `name` alone where there is none.
void GenreFromId3Number(QString& name, int number);
