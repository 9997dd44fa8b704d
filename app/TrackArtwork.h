#pragma once

#include "platform/Worker.h"

#include <QString>

class CArtworkField;
class CMediaList;
class CMediaLists;
class IStatusDisplay;
class QImage;

/// Shows the artwork of the current track in its field, and puts what is dropped there into the
/// track's file, if that is one of My Collection.
///
/// Thread:   interface thread; pictures are read and stored by workers, and come with the event
/// loop.
///           Until then the field keeps the one that it has.
/// Lifetime: what the constructor takes outlives this. Destroying it waits for no thread.
class CTrackArtwork {
public:
    /// `writer` stores what is dropped; `status` tells where that fails.
    CTrackArtwork(const CMediaLists& lists, CArtworkField& field, CWorker& writer,
                  IStatusDisplay& status);

    /// Shows the track at an index of a list, which is the current one from now on.
    void ShowTrack(const CMediaList& list, int index);

private:
    bool OnDrop(const QString& file);
    void OnStored(const QString& track, const QString& problem);
    [[nodiscard]] bool IsInCollection() const;
    void Read();
    void OnRead(const QImage& picture);

    const CMediaLists& m_lists;
    CArtworkField& m_field;
    CWorker& m_writer;
    IStatusDisplay& m_status;
    int m_iListId = -1;        ///< of the current track's list
    QString m_strTrackPath;    ///< of the current track; its index may change
    bool m_bReading = false;   ///< a thread is at work
    bool m_bReadAgain = false; ///< what it reads is out of date
    CWorker m_reader{"artwork"};
};
