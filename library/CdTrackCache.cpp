#include "library/CdTrackCache.h"

#include "base/DecimalValue.h"
#include "platform/Files.h"
#include "platform/Path.h"

#include <QtEndian>

#include <algorithm>
#include <optional>

namespace {

/// Where a CD's track file holds its track number, two bytes, the lower first.
constexpr std::uint64_t kTrackNumberOffset = 22;

std::optional<int> ReadTrackNumber(const QString& fileName) {
    const CFileDescriptor file = OpenForReading(fileName);
    if (!file.IsOpen())
        return std::nullopt;
    const QByteArray bytes = ReadAt(file.Get(), kTrackNumberOffset, sizeof(quint16));
    if (bytes.size() != sizeof(quint16))
        return std::nullopt;
    return qFromLittleEndian<quint16>(bytes.constData());
}

/// The entry with a track number, or the end.
template <typename Entries>
auto FindTrack(Entries& entries, int number) {
    return std::find_if(entries.begin(), entries.end(), [number](const CCdTrackEntry& entry) {
        return entry.m_nTrackNumber == number;
    });
}

} // namespace

int CCdTrackCache::LookupTrack(const QString& fileName, CTrackInfo& outInfo,
                               int numberTrackTitles) const {
    const std::optional<int> number = ReadTrackNumber(fileName);
    if (!number)
        return 1;
    const QString prefix =
        numberTrackTitles ? QStringLiteral("%1-").arg(*number, 2, 10, QChar(u'0')) : QString();
    outInfo.m_strTrackNumber = QString::number(*number);
    const auto entry = FindTrack(m_entries, *number);
    if (entry == m_entries.end()) {
        outInfo.m_strTitle = prefix + Path::BaseName(fileName);
        return 0;
    }
    outInfo.m_strAlbum = entry->m_strAlbum;
    outInfo.m_strArtist = entry->m_strArtist;
    outInfo.m_strComposer = entry->m_strComposer;
    outInfo.m_strGenre = entry->m_strGenre;
    outInfo.m_strTitle = prefix + entry->m_strTitle;
    outInfo.m_strDiskNumber = QString::number(entry->m_nDiskNumber);
    outInfo.m_strYear = QString::number(entry->m_nYear);
    return 0;
}

int CCdTrackCache::StoreTrack(const CTrackInfo& info, int overwriteAll) {
    const int number = DecimalValue(info.m_strTrackNumber);
    auto entry =
        std::find_if(m_entries.begin(), m_entries.end(), [number](const CCdTrackEntry& known) {
            return known.m_nTrackNumber == number;
        });
    if (entry == m_entries.end()) {
        entry = m_entries.emplace(entry);
        entry->m_nTrackNumber = number;
    }
    const auto store = [overwriteAll](QString& known, const QString& text) {
        if (overwriteAll || !text.isEmpty())
            known = text;
    };
    const auto storeNumber = [overwriteAll](int& known, const QString& text) {
        if (overwriteAll || !text.isEmpty())
            known = DecimalValue(text);
    };
    store(entry->m_strAlbum, info.m_strAlbum);
    store(entry->m_strArtist, info.m_strArtist);
    store(entry->m_strComposer, info.m_strComposer);
    store(entry->m_strGenre, info.m_strGenre);
    store(entry->m_strTitle, info.m_strTitle);
    storeNumber(entry->m_nDiskNumber, info.m_strDiskNumber);
    storeNumber(entry->m_nYear, info.m_strYear);
    return 0;
}
