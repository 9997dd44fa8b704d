#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

/// Milliseconds that a call takes.
template <typename Call>
double MeasureMs(Call call) {
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

/// Milliseconds of one core that a call takes of the whole process.
template <typename Call>
double ProcessorMs(Call call) {
    const std::clock_t start = std::clock();
    call();
    return (std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
}

inline double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
