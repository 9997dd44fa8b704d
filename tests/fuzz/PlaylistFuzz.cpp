// Reads whatever bytes the fuzzer makes up as a playlist, and saves and reads again what came out.

#include "library/PlaylistFile.h"
#include "tests/fixtures/ScratchFolder.h"
#include "tests/fuzz/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

QStringList Read(const QString& path, int allowDuplicates) {
    QStringList entries;
    Require(ReadPlaylist(path, entries, allowDuplicates) == 1);
    return entries;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFolder folder;
    const QString path =
        folder.Write(QStringLiteral("list.m3u"),
                     QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    const QStringList entries = Read(path, 1);
    QStringList once = entries;
    once.removeDuplicates();
    Require(Read(path, 0) == once);
    for (const QString& entry : entries) {
        Require(!entry.contains(u'\0') && !entry.contains(u'\n') && !entry.startsWith(u'#'));
        Require(entry.isValidUtf16() && entry.toUtf8().size() < 260);
    }
    for (const QString& entry : entries.first(std::min(entries.size(), qsizetype{16})))
        Require(ResolveEntry(path, entry).isEmpty() == entry.isEmpty());

    const QString saved = folder.File(QStringLiteral("saved.m3u"));
    Require(WritePlaylist(saved, entries) && Read(saved, 1) == entries);
    Require(AppendToPlaylist(saved, entries) && Read(saved, 1) == entries + entries);
    return 0;
}
