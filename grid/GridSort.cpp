#include "grid/GridSort.h"

#include "grid/GridCellBase.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace {

// Cells and texts of a run take a few cache lines and two pages each: the run fits both the cache
// and the table of pages of today's processors.
constexpr size_t kRunLength = 512;

struct Run {
    const GridSortKey* next;
    const GridSortKey* end;
};

/// Asks for what a compare reads of a cell.
void Prefetch(const GridSortKey& key) {
    __builtin_prefetch(key.cell);
    __builtin_prefetch(key.text);
}

void FetchRun(GridSortKey* start, GridSortKey* end) {
    for (GridSortKey* key = start; key != end; ++key) {
        key->text = key->cell->GetText().constData();
        __builtin_prefetch(key->text);
    }
}

/// Merges sorted runs through a tree of matches between them (Knuth, The Art of Computer
/// Programming, volume 3, 5.4.1: tree of losers). Taking the next key costs log2(runs) compares.
template <class Before>
class RunMerger {
public:
    RunMerger(std::vector<Run> runs, Before before)
        : m_runs(std::move(runs))
        , m_losers(m_runs.size())
        , m_before(before)
        , m_nWinner(Play(1)) {}

    GridSortKey Take() {
        Run& run = m_runs[m_nWinner];
        const GridSortKey taken = *run.next++;
        if (run.end - run.next > 1)
            Prefetch(run.next[1]);
        size_t winner = m_nWinner;
        for (size_t match = (winner + m_runs.size()) / 2; match > 0; match /= 2) {
            if (Beats(m_losers[match], winner))
                std::swap(m_losers[match], winner);
        }
        m_nWinner = winner;
        return taken;
    }

private:
    /// Plays the matches below a place in the tree, and returns the winner. Matches stand at
    /// 1 .. runs - 1, the runs themselves behind them.
    size_t Play(size_t place) {
        if (place >= m_runs.size())
            return place - m_runs.size();
        size_t winner = Play(2 * place);
        m_losers[place] = Play(2 * place + 1);
        if (Beats(m_losers[place], winner))
            std::swap(m_losers[place], winner);
        return winner;
    }

    /// An empty run loses; of equal keys, that of the earlier run wins.
    [[nodiscard]] bool Beats(size_t first, size_t second) const {
        const Run& one = m_runs[first];
        const Run& other = m_runs[second];
        if (one.next == one.end || other.next == other.end)
            return one.next != one.end;
        return first < second ? !m_before(*other.next, *one.next)
                              : m_before(*one.next, *other.next);
    }

    std::vector<Run> m_runs;
    std::vector<size_t> m_losers;
    Before m_before;
    size_t m_nWinner;
};

} // namespace

std::vector<GridSortKey> SortKeys(std::vector<GridSortKey> keys, GridCompare compare,
                                  bool ascending, qintptr data) {
    const auto before = [=](const GridSortKey& first, const GridSortKey& second) {
        const int order = compare(first.cell, second.cell, data);
        return ascending ? order < 0 : order > 0;
    };
    std::vector<Run> runs;
    for (size_t first = 0; first < keys.size(); first += kRunLength) {
        GridSortKey* start = keys.data() + first;
        GridSortKey* end = start + std::min(kRunLength, keys.size() - first);
        FetchRun(start, end);
        std::stable_sort(start, end, before);
        runs.push_back({start, end});
    }
    if (runs.size() < 2)
        return keys;
    RunMerger merger(std::move(runs), before);
    std::vector<GridSortKey> sorted(keys.size());
    std::generate(sorted.begin(), sorted.end(), [&] { return merger.Take(); });
    return sorted;
}
