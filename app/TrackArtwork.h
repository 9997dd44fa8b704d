#pragma once

#include "platform/MessageTarget.h"

#include <QString>

class ArtworkField;
class CMediaList;
class CMediaLists;
class IPlaybackGuard;

/// Name of the threads that read artwork.
inline constexpr const char* kArtworkThreadName = "artwork";

/// Shows the artwork of the current track in its field, and puts what is dropped there into the
/// track's file, if that is one of My Collection.
///
/// Thread:   interface thread; pictures are read on a thread of their own, one at a time, and come
///           with the event loop. Until then the field keeps the one that it has.
/// Lifetime: what the constructor takes outlives this. Destroying it waits for no thread.
class TrackArtwork {
public:
    /// `guard` is asked before a picture is stored.
    TrackArtwork(const CMediaLists& lists, ArtworkField& field, IPlaybackGuard& guard);

    /// Shows the track at an index of a list, which is the current one from now on.
    void ShowTrack(const CMediaList& list, int index);

private:
    bool OnDrop(const QString& file);
    [[nodiscard]] bool IsInCollection() const;
    void Read();
    void OnRead(Message& message);

    const CMediaLists& m_lists;
    ArtworkField& m_field;
    IPlaybackGuard& m_guard;
    int m_iListId = -1;        ///< of the current track's list
    QString m_strTrackPath;    ///< of the current track; its index may change
    bool m_bReading = false;   ///< a thread is at work
    bool m_bReadAgain = false; ///< what it reads is out of date
    MessageTarget m_messages;
};
