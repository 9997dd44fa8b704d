#include "player/PlayQueue.h"

#include "base/FileKinds.h"
#include "library/MediaList.h"

#include <algorithm>
#include <random>

namespace {

bool IsContinuous(int mode) {
    return mode == PLAY_CONTINUOUS || mode == PLAY_RANDOM_CONTINUOUS;
}

bool IsRandom(int mode) {
    return mode == PLAY_RANDOM || mode == PLAY_RANDOM_CONTINUOUS;
}

} // namespace

void CPlayQueue::Build(const CMediaList& list, int startRow, int mode) {
    Clear();
    m_iQueueIndex = 0;
    std::optional<CPlayQueueEntry> first;
    for (int row = 0; row < list.GetCount(); ++row) {
        const CTrackRecord& track = *list[row];
        if (IsPlaylistFile(track.m_strPath))
            continue;
        const bool leads =
            startRow == -1 ? !first && track.m_bChecked : IsRandom(mode) && row == startRow;
        if (leads)
            first = {track.m_strPath, row};
        else
            m_queue.push_back({track.m_strPath, row});
    }
    if (IsRandom(mode))
        std::shuffle(m_queue.begin(), m_queue.end(), std::mt19937(std::random_device()()));
    if (first)
        m_queue.insert(m_queue.begin(), *first);
    const auto start =
        std::find_if(m_queue.begin(), m_queue.end(),
                     [startRow](const CPlayQueueEntry& entry) { return entry.iRow == startRow; });
    if (start != m_queue.end())
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
