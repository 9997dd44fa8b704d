#pragma once

#include "base/Listeners.h"
#include "grid/GridTypes.h"
#include "library/ITrackView.h"
#include "library/TrackRecord.h"

#include <QString>

#include <functional>
#include <utility>
#include <vector>

class CGridCtrl;
class CMediaList;
class CMediaLists;
struct TrackColumn;

/// Pictures of the rows among those of the grid. A title has the picture of its list's type, unless
/// that list plays.
inline constexpr int kTrackImage = 4;
inline constexpr int kPlaylistImage = 5;
inline constexpr int kPlayingListImage = 7;

/// Shows the lists in the grid, each as a section of a title row and, when open, a row per track,
/// and lets clicks on the grid change the lists.
///
/// The rows of the grid carry nothing of their own. They are written when the grid needs them, from
/// what the lists hold then; records and lists remember the row that they got last. Whoever changes
/// the tracks of a list tells which have come or gone, whoever changes the texts of one calls
/// RefreshRows().
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CTrackView : public ITrackView {
public:
    CTrackView(CMediaLists& lists, CGridCtrl& grid);
    ~CTrackView();
    CTrackView(const CTrackView&) = delete;
    CTrackView& operator=(const CTrackView&) = delete;

    /// The mask of visible columns; the title's bit is always in it.
    void SetColumns(unsigned columns);
    [[nodiscard]] unsigned GetColumns() const { return m_dwColumns; }

    /// Shows the column of a command, or no longer. The title stays.
    void ToggleColumn(int command);

    /// Builds all rows anew and fits the columns to their texts. The grid scrolls to its head; the
    /// keyboard's focus goes with the track or title that has it, as long as that is shown, and
    /// from a track that has gone to the next one.
    void FillGrid() override;

    void OnTracksAppended(const CMediaList& list, int first) override;
    void OnTracksRemoved(const CMediaList& list, const std::vector<int>& indices) override;
    void RefillSection(const CMediaList& list) override;
    void RefreshRows(int keepSelection, const CMediaList* list, int index) override;
    void RefreshChecks(const CMediaList& list) override;
    void ShowText(const QString& path, TrackText text, const QString& value) override;
    void ShowPlayingList(int listId) override;
    void ShowList(int listId) override;
    [[nodiscard]] TrackPlace GetCurrentTrack() const override;

    /// Sorts the active list by a column of the grid, turning the direction each time.
    void SortColumn(int gridColumn);

    void ShowPath(const QString& path, const QString& renamed) override;
    void SetTrackStatus(const QString& path, const QString& text) override;

    void ActivateList(int listId) override;
    void ScrollToList(int listId) override;
    void FitColumns() override;

    /// Hears of each track that becomes the current one.
    [[nodiscard]] CListening
    OnCurrentTrack(std::function<void(const CMediaList&, int index)> call) {
        return m_currentTrack.Listen(std::move(call));
    }

    /// Hears of each track or playlist that is to be played.
    [[nodiscard]] CListening OnPlay(std::function<void(CMediaList&, int index)> call) {
        return m_play.Listen(std::move(call));
    }

    /// Hears of each text that was typed for a track.
    using TypedCall =
        std::function<void(const CMediaList&, int index, TrackText text, const QString& typed)>;
    [[nodiscard]] CListening OnTyped(TypedCall call) { return m_typed.Listen(std::move(call)); }

    /// Hears of what was clicked for a menu: a record, a list's title for -1, or no list for the
    /// header. `cell` is the grid's.
    using MenuCall = std::function<void(CCellID cell, const CMediaList*, int index)>;
    [[nodiscard]] CListening OnMenu(MenuCall call) { return m_menu.Listen(std::move(call)); }

    /// Takes the grid's notifications, allows edits or not, and stores what was typed.
    void OnNotify(GridNotification& notification);

    /// Does what a key of the parent means for the grid's rows: Space toggles the checks of the
    /// selected ones, Enter does what a double click does, and with Shift what a click on the
    /// header of the focused column does. False for any other key.
    bool OnKey(int key, Qt::KeyboardModifiers modifiers);

    /// Plays the current track, as a double click on it does.
    void PlayCurrent();

    /// Opens an edit of the current track, in the column of the last right click; of its title
    /// where that can't be edited.
    void EditClickedCell();

private:
    static constexpr int kCheckColumn = 0;
    static constexpr int kTitleGridColumn = 1;

    /// What a click does to the check box of its row.
    enum class CheckMark { Keep, Toggle, Set };

    /// What a row of the grid shows: the track at an index, the list's title for -1, or neither.
    struct Row {
        CMediaList* list = nullptr;
        int index = -1;
    };

    /// The rows of a list: that of its title and, behind it, one for each track that is shown.
    struct Section {
        int listId;
        int titleRow; ///< the header's in an exclusive view, where there is no title
        int tracks;   ///< shown: none of a closed section, nor those that nobody has told of
        int fitted;   ///< of the first ones the columns have been fitted to the texts

        [[nodiscard]] int RowOf(int index) const { return titleRow + 1 + index; }
    };

    // TrackView.cpp
    void ConfigureGrid();
    [[nodiscard]] int MakeSections();
    void BuildRows();
    void FillRow(int row);
    [[nodiscard]] CCellID FocusAfter(CCellID before, const Row& focused);
    void ForgetRows();
    [[nodiscard]] Row FindRow(int row) const;
    [[nodiscard]] const TrackColumn* ColumnAt(int gridColumn) const;
    [[nodiscard]] static int RowOf(const CMediaList& list, int index);
    void FillHeader();
    void MarkSortColumn();
    void FillTitleRow(const CMediaList& list, int row);
    void FillTrackRow(const CMediaList& list, int index, int row);
    void WriteTitle(const CMediaList& list, int row);
    void WriteTrack(const CMediaList& list, int index, int row);
    void WriteCheck(const CTrackRecord& track, int row);

    // TrackViewRows.cpp
    [[nodiscard]] Section* FindSection(const CMediaList& list);
    void InsertRows(int first, int count);
    void DeleteRows(int first, int count);
    void NumberRows(int firstRow = 0);
    void SelectMarked(const Section& section, const CMediaList& list, int first);
    void ShowNewTracks(Section& section, const CMediaList& list);
    void HideTracks(Section& section);
    void InsertSection(const CMediaList& list);
    void DeleteSection(const CMediaList& list);
    void RemapTracks(Section& section, const CMediaList& list);
    void FoldSection(CMediaList& list);
    void OnRemoving(const CMediaList& list);

    // TrackViewInput.cpp
    void OnClick(int row, CheckMark mark);
    void ClickList(CMediaList& list, int row, CheckMark mark);
    void ClickTrack(CMediaList& list, int index, CheckMark mark);
    void ForgetOtherSelections(CMediaList& list, int clicked);
    void OnRightClick(CCellID cell);
    void SelectClicked(CCellID cell);
    void OnDoubleClick(int row);
    void ToggleChecks();
    void PlayTrack(CMediaList& list, int index);
    [[nodiscard]] bool AllowsEdit(CCellID cell) const;
    void OnEdited(CCellID cell);

    CMediaLists& m_lists;
    CGridCtrl& m_grid;
    unsigned m_dwColumns;
    std::vector<const TrackColumn*> m_columns; ///< the visible ones, as the mask tells

    std::vector<Section> m_sections; ///< in the order of their rows
    CListening m_removing;

    CListeners<const CMediaList&, int> m_currentTrack;
    CListeners<CMediaList&, int> m_play;
    CListeners<const CMediaList&, int, TrackText, const QString&> m_typed;
    CListeners<CCellID, const CMediaList*, int> m_menu;

    TrackPlace m_current;        ///< the track that was clicked last
    QString m_strCurrentPath;    ///< its key: tracks may have been moved or taken out since
    int m_iLastListId = -1;      ///< list of the last click without the control key
    int m_iPlayingListId = -1;   ///< whose title says so
    int m_iClickColumn = -1;     ///< of the last right click
    bool m_bExclusive = false;   ///< the last FillGrid() was for an exclusive view
    CCellID m_idBeforeExclusive; ///< where the keyboard was before it
    CCellID m_idFocus; ///< where the keyboard was last; the grid's own goes on header clicks
};
