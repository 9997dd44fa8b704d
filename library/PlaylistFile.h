#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>

/// Playlist files: M3U, one path per line in UTF-8, lines that start with '#' told apart.
///
/// Paths are as platform/Path.h tells, and full but for entries. Thread: any, though not two on one
/// file. Errors: told by the result; none throws.

/// Reads the entries of a playlist; `entries` is emptied first. Returns 1 if the file could be
/// opened, else 0: also for what is no regular file, and for one larger than 16 MB or of more than
/// 250,000 entries.
///
/// Lines end at LF or CR LF and at the end of the file, a byte-order mark in front is passed over,
/// and lines that start with '#' are skipped. A line longer than 259 bytes comes as several, and a
/// byte of 0 cuts what is behind it off the line. An entry is empty where its line is, or is not
/// valid UTF-8. Nothing asks whether a file of that name is there.
///
/// With `allowDuplicates` zero each entry comes once, at its first place.
int ReadPlaylist(const QString& path, QStringList& entries, int allowDuplicates);

/// Path of the file that an entry stands for. Entries that begin at no root, drive or scheme count
/// from the playlist's folder. Where no file has the name as written, the '\' that other systems
/// put between names count as '/'; a path from a root keeps them unless that leads to a file.
[[nodiscard]] QString ResolveEntry(const QString& playlistPath, const QString& entry);

/// The files of a playlist, in its order; none if it can't be read. Asks the disk of each, and
/// stops with those that it has when told to.
[[nodiscard]] std::optional<QStringList> ReadPlaylistFiles(const QString& path,
                                                           const std::stop_token& stop = {});

/// Writes a playlist of these tracks, in the place of an old one or as a new file. False if it
/// could not be written, or not be read again, as with a line end in a name; then the old one is as
/// it was.
[[nodiscard]] bool WritePlaylist(const QString& path, const QStringList& tracks);

/// Adds tracks at the end of a playlist that is there. False if it could not be written, as above
/// but for the number of entries; then it is as it was. Takes all at once so that the file is
/// written once.
bool AppendToPlaylist(const QString& playlistPath, const QStringList& tracks);
