#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace keldrin {

// Index sorts: the answer is the order of the positions 0..n-1 by ascending key. They are heap
// sorts and so not stable, but the same keys always give the same order.

std::vector<std::size_t> indexSort(std::span<const float> keys);
std::vector<std::size_t> indexSort(std::span<const double> keys);

/// Orders rows of several keys, compared in turn. Two keys count as equal when they differ by
/// less than 10 spacings of the first; rows equal in all keys are "not less".
/// columns[c][i] is key c of row i; all columns have the same length.
std::vector<std::size_t> indexSortByKeys(std::span<const std::vector<double>> columns);

/// Puts `values` in the order of an index array, in place: values[i] becomes what stood at
/// index[i]. Both have the same length.
template <class T>
void permuteByIndex(std::span<T> values, std::vector<std::size_t> index) {
    for (std::size_t start = 0; start < index.size(); ++start) {
        if (index[start] == start) {
            continue;
        }
        // One cycle of the permutation; places that are done point at themselves.
        T first = std::move(values[start]);
        std::size_t place = start;
        while (index[place] != start) {
            const std::size_t source = index[place];
            values[place] = std::move(values[source]);
            index[place] = place;
            place = source;
        }
        values[place] = std::move(first);
        index[place] = place;
    }
}

/// The median; the upper middle value of an even count; 0 for an empty list.
template <class T>
T upperMedian(std::vector<T> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return values.empty() ? T{} : *middle;
}

/// The median; the lower middle value of an even count; 0 for an empty list.
template <class T>
T lowerMedian(std::vector<T> values) {
    if (values.empty()) {
        return T{};
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>((values.size() - 1) / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The k-th smallest value (k from 1), by partition selection in place.
/// returns  0, or 1 with `result` untouched when there is no value or k is outside 1..n
int selectKth(std::span<float> values, int k, float &result);

} // namespace keldrin
