#pragma once

#include "library/CdTrackCache.h"
#include "library/TrackRecord.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_set>
#include <vector>

/// What a list holds. The numbers are stored in requests and are the picture numbers of titles.
enum MediaType : int {
    MEDIA_TYPE_PHONE = 0,      ///< the tracks on one connected phone
    MEDIA_TYPE_COLLECTION = 1, ///< the tree of My Collection, playlist files included
    MEDIA_TYPE_ALL = 2,        ///< what the last scan of the computer found
    MEDIA_TYPE_CD = 3,         ///< one audio CD drive
    MEDIA_TYPE_PLAYLIST = 5,   ///< the playlist that is open
    MEDIA_TYPE_SELECTION = 6,  ///< copies of the checked tracks of another list
};

/// The exclusive views: only the selection list, or only the open playlist, is on screen. At most
/// one is set. Interface thread only.
extern int g_bSelectionOnly;
extern int g_bPlaylistOnly;

/// True while one of the exclusive views is on.
[[nodiscard]] bool IsExclusiveView();

/// Colours are numbers in the order 0x00BBGGRR.
using Colour = std::uint32_t;

/// An ordered list of tracks that owns them, with all that makes it a section of the view.
///
/// Thread: interface thread only. A record stays valid until it or the list is cleared.
class CMediaList {
public:
    CMediaList(const QString& name, int type, int expanded);

    CMediaList(const CMediaList&) = delete;
    CMediaList& operator=(const CMediaList&) = delete;

    [[nodiscard]] int GetCount() const { return static_cast<int>(m_records.size()); }

    /// The record at an index; none for a bad index.
    [[nodiscard]] CTrackRecord* operator[](int index) const;

    void Append(std::unique_ptr<CTrackRecord> record);

    /// Deletes the records for which `goes` says so; the others keep their order. Returns the
    /// indices that they had, in rising order.
    std::vector<int> RemoveIf(const std::function<bool(const CTrackRecord&)>& goes);

    /// Gives the record at an index another path.
    void SetPath(int index, const QString& path);

    /// Deletes all records and the CD cache. Title, type, identifier and colours stay.
    void ClearAll();

    /// The type of the list that the tracks are from: another one's, where they are copies.
    [[nodiscard]] int TypeOfSource() const;

    /// True if the section is on screen in the current view, open or closed.
    [[nodiscard]] bool IsOnScreen() const;

    /// True if the section's tracks are on screen in the current view.
    [[nodiscard]] bool ShowsTracks() const;

    /// True if the grid row is this section's title.
    [[nodiscard]] bool IsTitleHit(int row) const;

    /// Index of the track in a grid row, or -1. The first match wins.
    [[nodiscard]] int BodyHit(int row) const;

    /// Index of the first track with this path, or -1, found without a walk over the tracks.
    [[nodiscard]] int FindPath(const QString& path) const;

    /// Indices of all tracks with this path, in no order.
    [[nodiscard]] std::vector<int> FindPaths(const QString& path) const;

    [[nodiscard]] int CountChecked(int excludePlaylists) const;
    [[nodiscard]] int CountPlaylists() const;
    [[nodiscard]] int CountCheckedPlaylists() const;

    /// "Name (checked/all)".
    [[nodiscard]] QString GetTitleText() const;

    /// `direction` of SortBy that turns round what the last such sort did.
    static constexpr int kToggleDirection = -100;

    /// Sorts by the column of a bit (0: the check boxes): ascending for a `direction` other than
    /// zero, descending for zero. Equal tracks keep their order. Returns whether any track changed
    /// place; grid rows are left for the caller to rebuild.
    int SortBy(unsigned columnBit, int direction);

    /// The order that the last sort left, until tracks come or are moved.
    struct SortOrder {
        unsigned columnBit;
        bool ascending;
    };
    [[nodiscard]] std::optional<SortOrder> GetSortOrder() const { return m_sortOrder; }

    /// Below zero, zero or above zero as record i is before, equal to or behind record j. Numbers
    /// are compared by their 32-bit difference, which wraps.
    [[nodiscard]] int CompareRecords(int i, int j, unsigned columnBit) const;

    /// Moves each checked track up (down) by one where an unchecked one gives way. Tracks take the
    /// grid rows of their new places. `changedFlags` gets a 1 for each index that changed. Returns
    /// whether anything moved.
    int MoveCheckedUp(std::vector<int>& changedFlags);
    int MoveCheckedDown(std::vector<int>& changedFlags);

    /// Writes the playlist file `m_strPath` of all tracks in their order. False if it could not be
    /// written; then it is as it was.
    [[nodiscard]] bool SavePlaylist() const;

    QString m_strName;
    Colour m_crTitle = 0xE4E4E4;
    Colour m_crTitleActive = 0xFFA064;
    Colour m_crTitleText = 0;
    Colour m_crRowEven = 0xFFFFFF;
    Colour m_crRowOdd = 0xF4F4F4;
    Colour m_crRowPlaying = 0xFCE5C5;
    Colour m_crRowText = 0;
    int m_iType = -1;
    int m_iSourceType = -1;                    ///< of copies: type of the list they are from
    const int m_iId;                           ///< unique in the run
    int m_iMenuId = 0;                         ///< of a CD: identifier of its View menu item
    std::unique_ptr<CCdTrackCache> m_pCdCache; ///< of a CD
    QString m_strPath;                         ///< of a playlist: the open file
    int m_bModified = 0;                       ///< unsaved changes
    int m_bExpanded = 1;                       ///< the section is open
    int m_bVisible = 1;                        ///< the section takes part in the view
    int m_bActive = 0;                         ///< the list under the cursor
    int m_bSortAscending = 0;                  ///< direction of the last toggling sort
    int m_iTitleRow = -1;                      ///< grid row of the title at the last rebuild

private:
    /// Finds records by their paths. The case counts, as it does on disk.
    struct ByPath {
        using is_transparent = void;
        static const QString& PathOf(const QString& path) { return path; }
        static const QString& PathOf(const CTrackRecord* record) { return record->m_strPath; }
        std::size_t operator()(const auto& key) const { return qHash(PathOf(key)); }
        bool operator()(const auto& a, const auto& b) const { return PathOf(a) == PathOf(b); }
    };

    int MoveChecked(std::vector<int>& changedFlags, int first, int step);
    void Unindex(CTrackRecord& record);
    void Number();

    std::vector<std::unique_ptr<CTrackRecord>> m_records;
    std::unordered_multiset<CTrackRecord*, ByPath, ByPath> m_byPath;
    std::optional<SortOrder> m_sortOrder;
};
