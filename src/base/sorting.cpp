#include "base/sorting.h"

#include "base/index.h"
#include "base/real.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace keldrin {

namespace {

// A hand-written heap sort: std::sort needs a strict weak order, which "equal within a tolerance"
// is not; this one ends for any comparison.
template <class Less>
std::vector<std::size_t> heapSort(std::size_t count, Less less) {
    std::vector<std::size_t> index(count);
    std::iota(index.begin(), index.end(), std::size_t{0});
    const auto siftDown = [&](std::size_t start, std::size_t end) {
        std::size_t root = start;
        while (2 * root + 1 < end) {
            std::size_t child = 2 * root + 1;
            if (child + 1 < end && less(index[child], index[child + 1])) {
                ++child;
            }
            if (!less(index[root], index[child])) {
                return;
            }
            std::swap(index[root], index[child]);
            root = child;
        }
    };
    for (std::size_t start = count / 2; start-- > 0;) {
        siftDown(start, count);
    }
    for (std::size_t end = count; end > 1; --end) {
        std::swap(index[0], index[end - 1]);
        siftDown(0, end - 1);
    }
    return index;
}

template <class T>
std::vector<std::size_t> sortOneKey(std::span<const T> keys) {
    return heapSort(keys.size(),
                    [keys](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
}

} // namespace

std::vector<std::size_t> indexSort(std::span<const float> keys) {
    return sortOneKey(keys);
}

std::vector<std::size_t> indexSort(std::span<const double> keys) {
    return sortOneKey(keys);
}

std::vector<std::size_t> indexSortByKeys(std::span<const std::vector<double>> columns) {
    const std::size_t count = columns.empty() ? 0 : columns.front().size();
    return heapSort(count, [columns](std::size_t a, std::size_t b) {
        for (const std::vector<double> &keys : columns) {
            if (!(std::fabs(keys[a] - keys[b]) < 10.0 * spacing(keys[a]))) {
                return keys[a] < keys[b];
            }
        }
        return false;
    });
}

int selectKth(std::span<float> values, int k, float &result) {
    if (k < 1 || asIndex(k) > values.size()) {
        return 1;
    }
    const auto kth = values.begin() + (k - 1);
    std::nth_element(values.begin(), kth, values.end());
    result = *kth;
    return 0;
}

} // namespace keldrin
