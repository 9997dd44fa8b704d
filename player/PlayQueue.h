#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class CMediaList;

/// The numbers are stored in the settings.
enum PlayMode : int {
    PLAY_SINGLE = 0,     ///< the list once
    PLAY_CONTINUOUS = 1, ///< the list again and again
    PLAY_RANDOM = 2,     ///< the list once, in any order
    PLAY_RANDOM_CONTINUOUS = 3,
};

struct CPlayQueueEntry {
    QString strPath;
    int iRow = -1; ///< index in the list when the queue was built
};

/// The order in which the tracks of a list play, and the place in it.
class CPlayQueue {
public:
    /// Makes the order from a list's tracks; playlists, and what is not on this computer's disk,
    /// are left out. `startRow` is the track to begin with; for -1 it is the first checked one, if
    /// there is any, ahead of the rest.
    void Build(const CMediaList& list, int startRow, int mode);

    /// The same for the files of a playlist, whose rows are their places in it.
    void Build(const QStringList& files, int startRow, int mode);
    void Clear();

    /// One step on, round and round in the continuous modes. False at the end: then no entry is
    /// the current one, and the next step leads to the first.
    bool Next(int mode);

    /// One step back. In the modes that end the first entry stays the current one. False if there
    /// is none.
    bool Previous(int mode);

    /// Whether a step leads to another entry than the current one, or round to it.
    [[nodiscard]] bool CanNext(int mode) const;
    [[nodiscard]] bool CanPrevious(int mode) const;

    /// The current entry. Nothing before the first Build() and at the end.
    [[nodiscard]] std::optional<CPlayQueueEntry> Current() const;

    [[nodiscard]] int GetCount() const { return static_cast<int>(m_queue.size()); }

private:
    void Order(std::vector<CPlayQueueEntry> tracks, int firstRow, int startRow, int mode);

    std::vector<CPlayQueueEntry> m_queue;
    int m_iQueueIndex = -1; ///< of the current entry; -1: finished
};
