#pragma once

#include "base/IStatusDisplay.h"
#include "base/Listeners.h"
#include "library/CommandContext.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class CCommandMap;
class CMediaList;

/// What the view and the status line show of lists while they are filled, and the commands that
/// fill them anew.
///
/// The tracks of a scan come on screen at its end; of one that takes longer than a second, from
/// time to time as well, but so that showing them takes a small share of the interface thread's
/// time.
///
/// Thread: interface thread. Lifetime: what the constructor takes outlives this.
class CListFilling {
public:
    /// `mayTakeOver` says whether a list that was filled in the background may become the active
    /// one; the one of All Music always does.
    CListFilling(const CommandContext& context, CCommandMap& commands,
                 std::function<bool(const CMediaList& list)> mayTakeOver);

    /// Reads the folder of My Collection, or of another list of the disk, into its empty list.
    void Fill(const CMediaList& list);

private:
    using Clock = std::chrono::steady_clock;

    /// A list that is being filled.
    struct Filling {
        int shown = 0;           ///< how many of its tracks are on screen
        Clock::time_point begin; ///< of the scan
        std::unique_ptr<IRunningOperation> operation;
    };

    void OnFound(const CMediaList& list, int first);
    void OnDone(const CMediaList& list, bool isWhole);
    void ShowSome();
    void Show(const CMediaList& list, Filling& filling);
    void Refresh();

    const CommandContext m_context;
    const std::function<bool(const CMediaList& list)> m_pfnMayTakeOver;
    std::map<int, Filling> m_fillings; ///< by list
    Clock::time_point m_next;          ///< when some may be shown again
    QTimer m_timer;                    ///< to show what came before it might be shown
    std::vector<CListening> m_listenings;
};
