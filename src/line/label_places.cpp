#include "line/label_places.h"

#include "base/index.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace keldrin {

namespace {

constexpr float CellsPerCm = 10.0F;
constexpr float Gap = 0.1F; // cm between a point and its label, and between labels in a row

int cellAt(float cm) {
    return static_cast<int>(std::floor(cm * CellsPerCm));
}

// Sides of a box that a label may stand at: how far its left end and its baseline lie from the
// box's corner, in widths and heights of box and label.
struct Side {
    float boxWidths;
    float labelWidths;
    float boxHeights;
    float labelHeights;
    float gapsAcross;
    float gapsUpward;
};

constexpr std::array Sides = {
    Side{0.5F, -0.5F, 1.0F, 0.0F, 0.0F, 1.0F},   // above
    Side{0.5F, -0.5F, 0.0F, -1.0F, 0.0F, -1.0F}, // below
    Side{1.0F, 0.0F, 0.5F, -0.5F, 1.0F, 0.0F},   // right
    Side{0.0F, -1.0F, 0.5F, -0.5F, -1.0F, 0.0F}, // left
    Side{1.0F, 0.0F, 1.0F, 0.0F, 0.0F, 0.0F},    // the corners
    Side{0.0F, -1.0F, 1.0F, 0.0F, 0.0F, 0.0F},   Side{1.0F, 0.0F, 0.0F, -1.0F, 0.0F, 0.0F},
    Side{0.0F, -1.0F, 0.0F, -1.0F, 0.0F, 0.0F},
};

PageFrame boxAt(const Side &side, const PageFrame &box, float width, float height) {
    const float left = box.left + side.boxWidths * (box.right - box.left) +
                       side.labelWidths * width + side.gapsAcross * Gap;
    const float bottom = box.bottom + side.boxHeights * (box.top - box.bottom) +
                         side.labelHeights * height + side.gapsUpward * Gap;
    return {left, bottom, left + width, bottom + height};
}

PageFrame boxAround(const LabelledPoint &point) {
    constexpr float reach = 0.08F; // of a dot
    return {point.x - reach, point.y - reach, point.x + reach, point.y + reach};
}

// Points with a label, one of those with the same label at one place.
std::vector<std::size_t> pointsToLabel(std::span<const LabelledPoint> points) {
    std::set<std::tuple<int, int, std::string_view>> places;
    std::vector<std::size_t> chosen;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!points[i].text.empty() &&
            places.emplace(cellAt(points[i].x), cellAt(points[i].y), points[i].text).second) {
            chosen.push_back(i);
        }
    }
    return chosen;
}

// Gives up at the first label too many that has no room.
bool placeEvery(std::size_t step, PageRoom &room, std::span<const LabelledPoint> points,
                const std::vector<std::size_t> &chosen, float height,
                std::vector<LabelPlace> &places) {
    constexpr std::size_t missesPerTen = 1;
    const std::size_t wanted = (chosen.size() + step - 1) / step;
    std::size_t missed = 0;
    for (std::size_t k = 0; k < chosen.size(); k += step) {
        const LabelledPoint &point = points[chosen[k]];
        std::optional<LabelPlace> place = placeBeside(room, boxAround(point), point.width, height);
        if (place) {
            place->point = chosen[k];
            places.push_back(*place);
        } else if (++missed * 10 > wanted * missesPerTen && step < chosen.size()) {
            return false;
        }
    }
    return true;
}

std::size_t nextStep(std::size_t step) {
    std::size_t power = 1;
    while (step >= power * 10) {
        power *= 10;
    }
    return step == power ? 2 * power : step == 2 * power ? 5 * power : 10 * power;
}

} // namespace

PageRoom::PageRoom(const PageFrame &frame)
    : frame_(frame), across_(cellAt(frame.right - frame.left) + 1),
      upward_(cellAt(frame.top - frame.bottom) + 1),
      taken_(static_cast<std::size_t>(across_) * static_cast<std::size_t>(upward_), false) {}

PageRoom::Cells PageRoom::cellsOf(const PageFrame &box) const {
    return {std::max(0, cellAt(box.left - frame_.left)),
            std::max(0, cellAt(box.bottom - frame_.bottom)),
            std::min(across_ - 1, cellAt(box.right - frame_.left)),
            std::min(upward_ - 1, cellAt(box.top - frame_.bottom))};
}

bool PageRoom::isFree(const PageFrame &box) const {
    if (!(box.left >= frame_.left) || !(box.right <= frame_.right) ||
        !(box.bottom >= frame_.bottom) || !(box.top <= frame_.top)) {
        return false;
    }
    const Cells cells = cellsOf(box);
    for (int y = cells.bottom; y <= cells.top; ++y) {
        for (int x = cells.left; x <= cells.right; ++x) {
            if (taken_[asIndex(y * across_ + x)]) {
                return false;
            }
        }
    }
    return true;
}

void PageRoom::take(const PageFrame &box) {
    if (!(box.right >= frame_.left) || !(box.left <= frame_.right) || !(box.top >= frame_.bottom) ||
        !(box.bottom <= frame_.top)) {
        return;
    }
    const Cells cells = cellsOf(box);
    for (int y = cells.bottom; y <= cells.top; ++y) {
        for (int x = cells.left; x <= cells.right; ++x) {
            taken_[asIndex(y * across_ + x)] = true;
        }
    }
}

void PageRoom::takeLine(float x1, float y1, float x2, float y2) {
    constexpr float mostSteps = 1000.0F; // lines that begin far outside the frame
    const float steps =
        std::min(mostSteps, std::ceil(std::hypot(x2 - x1, y2 - y1) * CellsPerCm * 2.0F));
    for (float i = 0.0F; i <= steps; i += 1.0F) {
        const float part = steps > 0.0F ? i / steps : 0.0F;
        const float x = x1 + part * (x2 - x1);
        const float y = y1 + part * (y2 - y1);
        take({x, y, x, y});
    }
}

std::optional<LabelPlace> placeBeside(PageRoom &room, const PageFrame &box, float width,
                                      float height) {
    for (const Side &side : Sides) {
        const PageFrame label = boxAt(side, box, width, height);
        if (room.isFree(label)) {
            room.take({label.left - Gap, label.bottom, label.right + Gap, label.top});
            return LabelPlace{0, label.left, label.bottom};
        }
    }
    return std::nullopt;
}

std::vector<LabelPlace> placeLabels(PageRoom &room, std::span<const LabelledPoint> points,
                                    float height) {
    for (const LabelledPoint &point : points) {
        room.take(boxAround(point));
    }
    const std::vector<std::size_t> chosen = pointsToLabel(points);
    for (std::size_t step = 1; !chosen.empty(); step = nextStep(step)) {
        PageRoom tried = room;
        std::vector<LabelPlace> places;
        if (placeEvery(step, tried, points, chosen, height, places)) {
            room = std::move(tried);
            return places;
        }
    }
    return {};
}

} // namespace keldrin
