#pragma once

#include <QString>

class ArtworkField;
class CMediaList;
class CMediaLists;

/// Shows the artwork of the current track in its field, and puts what is dropped there into the
/// track's file, if that is one of My Collection.
///
/// Thread: interface thread. Lifetime: lists and field outlive this.
class TrackArtwork {
public:
    TrackArtwork(const CMediaLists& lists, ArtworkField& field);

    /// Shows the track at an index of a list, which is the current one from now on.
    void ShowTrack(const CMediaList& list, int index);

private:
    bool OnDrop(const QString& file);
    [[nodiscard]] bool IsInCollection() const;
    void Show();

    const CMediaLists& m_lists;
    ArtworkField& m_field;
    int m_iListId = -1;     ///< of the current track's list
    QString m_strTrackPath; ///< of the current track; its index may change
};
