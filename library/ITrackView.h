#pragma once

#include "library/TrackRecord.h"

#include <vector>

class CMediaList;

/// A track by its place in a list, or the list's title for index -1. It may be kept from one event
/// to the next; then the list has to be looked for again, and the index may be another track's.
struct TrackPlace {
    int listId = -1; ///< -1: nothing
    int index = -1;

    bool operator==(const TrackPlace&) const = default;
};

/// What the parts that change lists ask of the view that shows them.
///
/// Thread: interface thread.
class ITrackView {
public:
    /// Builds all rows anew from the lists.
    virtual void FillGrid() = 0;

    /// Shows the tracks that have come to the end of a list, from index `first` on. Rows, scroll
    /// position, selection, focus and an open edit stay with their tracks.
    virtual void OnTracksAppended(const CMediaList& list, int first) = 0;

    /// Takes the rows of tracks out that have gone from a list; `indices` are those that they had,
    /// in rising order. What remains stays as it is on screen.
    virtual void OnTracksRemoved(const CMediaList& list, const std::vector<int>& indices) = 0;

    /// Builds the rows of one list anew, after others have come in their place, or it has come or
    /// gone as a section. The rows of the others stay as they are.
    virtual void RefillSection(const CMediaList& list) = 0;

    /// Writes one row anew: that of the record at `index`, or the title for -1. Nothing if the row
    /// is not on screen. With `keepSelection` 0 the row is selected afterwards if its record is,
    /// and a title is not.
    virtual void RefreshRows(int keepSelection, const CMediaList* list, int index) = 0;

    /// Writes the check boxes of all rows of a list anew, and its title.
    virtual void RefreshChecks(const CMediaList& list) = 0;

    /// Puts `value` into a text of all tracks of this file, which may be in several lists.
    virtual void ShowText(const QString& path, TrackText text, const QString& value) = 0;

    /// Gives all tracks of a file that was renamed its new path.
    virtual void ShowPath(const QString& path, const QString& renamed) = 0;

    /// Shows `text` as the status of the first track with this path. Empty text clears it.
    virtual void SetTrackStatus(const QString& path, const QString& text) = 0;

    /// Marks the title of the list that plays; none for -1.
    virtual void ShowPlayingList(int listId) = 0;

    /// Makes a list the active one, leaving the selection view, and scrolls to it; the keyboard's
    /// focus goes to its title. Nothing while a playlist is open, or without such a list.
    virtual void ShowList(int listId) = 0;

    /// ShowList() without scrolling and the focus.
    virtual void ActivateList(int listId) = 0;

    /// Scrolls so far that the title of a list is at the top, or all behind it is on screen.
    virtual void ScrollToList(int listId) = 0;

    /// Fits the columns to their texts, but for those that were sized by hand.
    virtual void FitColumns() = 0;

    /// The track that was clicked last, while it is there.
    [[nodiscard]] virtual TrackPlace GetCurrentTrack() const = 0;

protected:
    ~ITrackView() = default;
};
