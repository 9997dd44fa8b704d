#pragma once

#include <QtGlobal>

#include <vector>

/// The sizes of all rows, or of all columns, in pixels, and where each of them starts.
///
/// Where a row starts is the sum of all sizes before it. The sums are kept, so that a lookup takes
/// O(log n) at most; they are made anew, in O(n), by the first lookup after a change.
/// A size of 0 hides the row or column: no position falls into it.
class CGridAxis {
public:
    [[nodiscard]] int Count() const { return static_cast<int>(m_arSizes.size()); }

    /// Cuts the end off, or appends entries of `size`.
    void SetCount(int count, quint32 size);

    /// Entries of `size` come before entry `first`, the others keep their sizes.
    void Insert(int first, int count, quint32 size);
    void Remove(int first, int count);

    [[nodiscard]] quint32 Size(int index) const { return m_arSizes[index]; }
    void SetSize(int index, quint32 size);

    /// Gives every entry of size `from` the size `to`.
    void ReplaceSize(quint32 from, quint32 to);

    /// Puts the sizes from `first` on into another order: place first + i gets what stood at
    /// order[i].
    void Reorder(int first, const std::vector<int>& order);

    /// Where entry `index` starts; index Count() is the end of all.
    [[nodiscard]] int Start(int index) const { return Starts()[index]; }
    [[nodiscard]] int Total() const { return Starts().back(); }

    /// The entry that covers `position`; -1 before the first, Count() behind the last.
    [[nodiscard]] int IndexAt(int position) const;

    /// The next entry from `index` on in direction `step` (1 or -1) that is not hidden and lies in
    /// [first, Count()); -1 if there is none.
    [[nodiscard]] int NextVisible(int index, int step, int first) const;

private:
    const std::vector<int>& Starts() const;

    std::vector<quint32> m_arSizes;
    mutable std::vector<int> m_arStarts{0}; ///< one more than sizes
    mutable bool m_bStale = false;
};
