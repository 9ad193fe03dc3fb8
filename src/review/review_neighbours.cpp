#include "review/review_entry.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

namespace keldrin {

namespace {

constexpr std::array Choices = {0, 1, 2, 5}; // soundings on each side, in turn

void showMoreNeighbours(Review &review, const ToolkitEvent & /*event*/) {
    const auto *more = std::upper_bound(Choices.begin(), Choices.end(), review.state.neighbours);
    const int count = more != Choices.end() ? *more : Choices.front();
    review.state.neighbours = count;
    review.limits.neighbours = count;
    const std::string soundings = std::to_string(count) + (count == 1 ? " sounding" : " soundings");
    ToolkitStatus(StatusPart::Notice,
                  count == 0 ? "No neighbours are drawn." : soundings + " on each side in grey.");
}

constexpr std::array NeighbourBindings = {
    ReviewBinding{EventKey, 'G', showMoreNeighbours},
    ReviewBinding{EventKey, 'g', showMoreNeighbours},
};

} // namespace

std::span<const ReviewBinding> neighbourBindings() {
    return NeighbourBindings;
}

} // namespace keldrin
