#include "library/CdTrackCache.h"

#include "base/DecimalValue.h"
#include "platform/Files.h"
#include "platform/Path.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <optional>

namespace {

/// Where a CD's track file holds its track number, two bytes, the lower first.
constexpr off_t kTrackNumberOffset = 22;

std::optional<int> ReadTrackNumber(const QString& fileName) {
    const FileDescriptor file = OpenForReading(fileName);
    std::array<unsigned char, 2> bytes{};
    if (!file.IsOpen() || ::pread(file.Get(), bytes.data(), bytes.size(), kTrackNumberOffset) !=
                              static_cast<ssize_t>(bytes.size()))
        return std::nullopt;
    return bytes[0] | bytes[1] << 8;
}

} // namespace

const CCdTrackEntry* CCdTrackCache::Find(int trackNumber) const {
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [trackNumber](const CCdTrackEntry& entry) {
            return entry.m_nTrackNumber == trackNumber;
        });
    return found == m_entries.end() ? nullptr : &*found;
}

int CCdTrackCache::LookupTrack(const QString& fileName, CTrackInfo& outInfo,
                               int numberTrackTitles) const {
    const std::optional<int> number = ReadTrackNumber(fileName);
    if (!number)
        return 1;
    const QString prefix =
        numberTrackTitles ? QStringLiteral("%1-").arg(*number, 2, 10, QChar(u'0')) : QString();
    outInfo.m_strTrackNumber = QString::number(*number);
    const CCdTrackEntry* entry = Find(*number);
    if (!entry) {
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
