#pragma once

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

/// Sorts `items` stably in O(n log n) compares. `isAfter(a, b)` says that a belongs behind b.
///
/// Unlike the standard library's sorts, this is defined for any `isAfter`, also for one that is no
/// order: the result then is some permutation of the items.
template <typename T, typename IsAfter>
void MergeSort(std::vector<T>& items, IsAfter isAfter) {
    const std::size_t count = items.size();
    std::vector<T> merged(count);
    for (std::size_t width = 1; width < count; width *= 2) {
        for (std::size_t begin = 0; begin < count; begin += 2 * width) {
            const auto left = items.begin() + begin;
            const auto middle = items.begin() + std::min(begin + width, count);
            const auto right = items.begin() + std::min(begin + 2 * width, count);
            auto out = merged.begin() + begin;
            auto a = left;
            auto b = middle;
            while (a != middle && b != right)
                *out++ = std::move(isAfter(*a, *b) ? *b++ : *a++);
            out = std::move(a, middle, out);
            std::move(b, right, out);
        }
        items.swap(merged);
    }
}
