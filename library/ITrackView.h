#pragma once

#include "library/TrackRecord.h"

class CMediaList;

/// A track by its place in a list.
struct TrackPlace {
    CMediaList* list = nullptr; ///< none: no track
    int index = -1;
};

/// What the parts that change lists ask of the view that shows them.
///
/// Thread: interface thread.
class ITrackView {
public:
    /// Builds all rows anew from the lists.
    virtual void FillGrid() = 0;

    /// Writes one row anew: that of the record at `index`, or the title for -1. Nothing if the row
    /// is not on screen. With `keepSelection` 0 the row is selected afterwards if its record is,
    /// and a title is not.
    virtual void RefreshRows(int keepSelection, const CMediaList* list, int index) = 0;

    /// Writes the check boxes of all rows of a list anew, and its title.
    virtual void RefreshChecks(const CMediaList& list) = 0;

    /// Puts `value` into a text of all tracks of this file, which may be in several lists.
    virtual void ShowText(const QString& path, TrackText text, const QString& value) = 0;

    /// Marks the title of the list that plays; none for null.
    virtual void ShowPlayingList(const CMediaList* list) = 0;

    /// Makes the first list of a type the active one, leaving the selection view, and scrolls to
    /// it; the keyboard's focus goes to its title. Nothing while a playlist is open, or without
    /// such a list.
    virtual void ShowList(int type) = 0;

    /// The track that was clicked last, while it is there.
    [[nodiscard]] virtual TrackPlace GetCurrentTrack() const = 0;

protected:
    ~ITrackView() = default;
};
