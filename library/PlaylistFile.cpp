#include "library/PlaylistFile.h"

#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Path.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

constexpr qsizetype kMaxFile = 16 * 1024 * 1024; ///< bytes
constexpr qsizetype kMaxPiece = 259;             ///< bytes of a line that are read at once
constexpr qsizetype kMaxEntries = 250'000;       ///< each becomes a track in memory

/// A name with an end of line in it would come back as two.
bool FitIntoLines(const QStringList& tracks) {
    return std::none_of(tracks.begin(), tracks.end(),
                        [](const QString& track) { return track.contains(u'\n'); });
}

/// Takes the next line off the head of `text`, and returns it without its end. What is behind a
/// byte of 0 could not be seen by the system's calls.
QByteArrayView TakeLine(QByteArrayView& text) {
    const qsizetype end = text.indexOf('\n');
    QByteArrayView line = end < 0 ? text : text.first(end);
    text = text.sliced(end < 0 ? text.size() : end + 1);
    if (end >= 0 && line.endsWith('\r'))
        line.chop(1);
    const qsizetype zero = line.indexOf('\0');
    return zero < 0 ? line : line.first(zero);
}

/// The next piece of a line, taken off its head.
QByteArrayView TakePiece(QByteArrayView& line) {
    const QByteArrayView piece = line.first(std::min(line.size(), kMaxPiece));
    line = line.sliced(piece.size());
    return piece;
}

/// Empty for what is not valid UTF-8, whose bytes Path keeps as lone surrogates.
QString Decode(QByteArrayView piece) {
    QString entry = Path::FromBytes(piece);
    return entry.isValidUtf16() ? entry : QString();
}

bool IsFile(const QString& path) {
    const std::optional<FileStatus> status =
        path.startsWith(u'/') ? GetFileStatus(path) : std::nullopt;
    return status && status->kind == FileKind::Regular;
}

/// Whether an entry counts from the playlist's folder.
bool IsRelative(const QString& entry) {
    static const QRegularExpression root(
        QStringLiteral(R"(^(?:[/\\]|[A-Za-z]:|[A-Za-z][A-Za-z0-9+.-]*://))"));
    return !entry.isEmpty() && !root.match(entry).hasMatch();
}

} // namespace

int ReadPlaylist(const QString& path, QStringList& entries, int allowDuplicates) {
    entries.clear();
    const std::optional<QByteArray> content = ReadWholeFile(path, kMaxFile);
    if (!content)
        return 0;
    QByteArrayView text = *content;
    constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");
    if (text.startsWith(kByteOrderMark))
        text = text.sliced(kByteOrderMark.size());
    QSet<QString> seen; // stays empty where duplicates are allowed
    while (!text.isEmpty()) {
        QByteArrayView line = TakeLine(text);
        do {
            const QByteArrayView piece = TakePiece(line);
            const QString entry = Decode(piece);
            if (piece.startsWith('#') || seen.contains(entry))
                continue;
            if (entries.size() == kMaxEntries) {
                entries.clear();
                return 0;
            }
            entries += entry;
            if (!allowDuplicates)
                seen += entry;
        } while (!line.isEmpty());
    }
    return 1;
}

QString ResolveEntry(const QString& playlistPath, const QString& entry) {
    const bool isRelative = IsRelative(entry);
    const QString folder = playlistPath.first(playlistPath.lastIndexOf(u'/') + 1);
    const QString written = isRelative ? QDir::cleanPath(folder + entry) : entry;
    if (!entry.contains(u'\\') || IsFile(written))
        return written;
    QString slashed = entry;
    slashed.replace(u'\\', u'/');
    if (isRelative)
        return QDir::cleanPath(folder + slashed);
    return IsFile(slashed) ? slashed : entry;
}

std::optional<QStringList> ReadPlaylistFiles(const QString& path, const std::stop_token& stop) {
    QStringList entries;
    if (!ReadPlaylist(path, entries, 1))
        return std::nullopt;
    QStringList files;
    for (const QString& entry : entries) {
        if (stop.stop_requested())
            break;
        files += ResolveEntry(path, entry);
    }
    return files;
}

bool WritePlaylist(const QString& path, const QStringList& tracks) {
    QByteArray text("#EXTM3U\r\n");
    for (const QString& track : tracks)
        text += "#EXTINF:0, \r\n" + Path::ToBytes(track) + "\r\n";
    if (text.size() > kMaxFile || tracks.size() > kMaxEntries || !FitIntoLines(tracks))
        return false;
    std::optional<CFileReplacement> file = CFileReplacement::BeginOrCreate(path);
    return file && file->Append(text) && file->Commit();
}

bool AppendToPlaylist(const QString& playlistPath, const QStringList& tracks) {
    std::optional<CFileReplacement> file = CFileReplacement::Begin(playlistPath);
    if (!file)
        return false;
    const std::uint64_t size = file->OriginalSize();
    QByteArray text;
    if (size > 0 && ReadAt(file->Original(), size - 1, 1) != "\n")
        text += "\r\n"; // the last entry would run into the first new one
    for (const QString& track : tracks)
        text += Path::ToBytes(track) + "\r\n";
    if (size + static_cast<std::uint64_t>(text.size()) > kMaxFile || !FitIntoLines(tracks))
        return false;
    return file->AppendOriginal(0, size) && file->Append(text) && file->Commit();
}
