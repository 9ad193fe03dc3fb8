#pragma once

#include <cstddef>
#include <span>
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

/// True when an index array is 0, 1, 2, ...: nothing need be moved.
bool isInOrder(std::span<const std::size_t> index);

/// Rewrites `values` in the order of an index array.
template <class T>
void permuteByIndex(std::vector<T> &values, std::span<const std::size_t> index) {
    std::vector<T> ordered;
    ordered.reserve(index.size());
    for (const std::size_t source : index) {
        ordered.push_back(values[source]);
    }
    values = std::move(ordered);
}

/// The k-th smallest value (k from 1), by partition selection in place.
/// returns  0, or 1 with `result` untouched when there is no value or k is outside 1..n
int selectKth(std::span<float> values, int k, float &result);

} // namespace keldrin
