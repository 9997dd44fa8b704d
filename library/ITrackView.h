#pragma once

class CMediaList;

/// What the parts that change tracks ask of the view that shows them.
///
/// Thread: interface thread.
class ITrackView {
public:
    /// Writes one row anew: that of the record at `index`, or the title for -1. Nothing if the row
    /// is not on screen. With `keepSelection` 0 the row is no longer selected afterwards.
    virtual void RefreshRows(int keepSelection, const CMediaList* list, int index) = 0;

    /// Marks the title of the list that plays; none for null.
    virtual void ShowPlayingList(const CMediaList* list) = 0;

protected:
    ~ITrackView() = default;
};
