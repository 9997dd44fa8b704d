#include "player/PlayQueue.h"

#include "base/FileKinds.h"
#include "library/MediaList.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <utility>

namespace {

bool IsContinuous(int mode) {
    return mode == PLAY_CONTINUOUS || mode == PLAY_RANDOM_CONTINUOUS;
}

bool IsRandom(int mode) {
    return mode == PLAY_RANDOM || mode == PLAY_RANDOM_CONTINUOUS;
}

} // namespace

void CPlayQueue::Build(const CMediaList& list, int startRow, int mode) {
    std::vector<CPlayQueueEntry> tracks;
    int firstRow = IsRandom(mode) ? startRow : -1;
    for (int row = 0; row < list.GetCount(); ++row) {
        const CTrackRecord& track = *list[row];
        if (IsPlaylistFile(track.m_strPath) || track.m_origin != TrackOrigin::Computer)
            continue;
        tracks.push_back({track.m_strPath, row});
        if (startRow == -1 && firstRow == -1 && track.m_bChecked)
            firstRow = row;
    }
    Order(std::move(tracks), firstRow, startRow, mode);
}

void CPlayQueue::Build(const QStringList& files, int startRow, int mode) {
    std::vector<CPlayQueueEntry> tracks;
    for (int row = 0; row < files.size(); ++row)
        if (!IsPlaylistFile(files[row]))
            tracks.push_back({files[row], row});
    Order(std::move(tracks), IsRandom(mode) ? startRow : -1, startRow, mode);
}

/// The track of `firstRow` comes ahead of all, that of `startRow` is the current one.
void CPlayQueue::Order(std::vector<CPlayQueueEntry> tracks, int firstRow, int startRow, int mode) {
    m_queue = std::move(tracks);
    m_iQueueIndex = 0;
    const auto find = [this](int row) {
        return std::find_if(m_queue.begin(), m_queue.end(),
                            [row](const CPlayQueueEntry& entry) { return entry.iRow == row; });
    };
    auto rest = m_queue.begin();
    if (const auto first = find(firstRow); first != m_queue.end())
        std::rotate(rest++, first, std::next(first));
    if (IsRandom(mode))
        std::shuffle(rest, m_queue.end(), std::mt19937(std::random_device()()));
    if (const auto start = find(startRow); start != m_queue.end())
        m_iQueueIndex = static_cast<int>(start - m_queue.begin());
}

void CPlayQueue::Clear() {
    m_queue.clear();
    m_iQueueIndex = -1;
}

bool CPlayQueue::Next(int mode) {
    ++m_iQueueIndex;
    if (m_iQueueIndex >= GetCount())
        m_iQueueIndex = IsContinuous(mode) && !m_queue.empty() ? 0 : -1;
    return m_iQueueIndex != -1;
}

bool CPlayQueue::Previous(int mode) {
    if (m_iQueueIndex > 0)
        --m_iQueueIndex;
    else if (IsContinuous(mode))
        m_iQueueIndex = GetCount() - 1;
    return Current().has_value();
}

bool CPlayQueue::CanNext(int mode) const {
    return IsContinuous(mode) ? !m_queue.empty()
                              : m_iQueueIndex >= 0 && m_iQueueIndex < GetCount() - 1;
}

bool CPlayQueue::CanPrevious(int mode) const {
    return IsContinuous(mode) ? !m_queue.empty() : m_iQueueIndex > 0;
}

std::optional<CPlayQueueEntry> CPlayQueue::Current() const {
    if (m_iQueueIndex < 0 || m_iQueueIndex >= GetCount())
        return std::nullopt;
    return m_queue[m_iQueueIndex];
}
