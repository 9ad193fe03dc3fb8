#include "support/picture.h"

#include "page/text_metrics.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <sstream>

namespace keldrin {

double InkMap::total() const {
    return std::accumulate(ink.begin(), ink.end(), 0.0);
}

bool Picture::read(const std::string &content) {
    std::istringstream head(content);
    std::string kind;
    int most = 0;
    head >> kind >> width_ >> height_ >> most;
    channels_ = kind == "P6" ? 3 : 1;
    const std::size_t size = width_ * height_ * channels_;
    if (!head || (kind != "P6" && kind != "P5") || most != 255 || size == 0 ||
        size >= content.size()) {
        return false;
    }
    bytes_ = content.substr(content.size() - size);
    return true;
}

InkMap Picture::inkMap() const {
    InkMap map;
    const double pixelsInCell =
        static_cast<double>(width_ * height_) / static_cast<double>(InkMap::Across * InkMap::Down);
    for (std::size_t y = 0; y < height_; ++y) {
        for (std::size_t x = 0; x < width_; ++x) {
            const double red = channel(x, y, 0);
            const double blue = channel(x, y, channels_ - 1);
            const double lightest = std::min({red, channel(x, y, channels_ / 2), blue});
            map.at(x * InkMap::Across / width_, y * InkMap::Down / height_) +=
                (1.0 - lightest) / pixelsInCell;
            map.red += std::max(0.0, red - blue) / pixelsInCell;
            map.blue += std::max(0.0, blue - red) / pixelsInCell;
        }
    }
    return map;
}

void Picture::dot(double x, double y, PageColour colour, double darkness) {
    const auto column = static_cast<std::ptrdiff_t>(x * PixelsPerCm);
    const auto row = static_cast<std::ptrdiff_t>(static_cast<double>(height_) - y * PixelsPerCm);
    if (column < 0 || row < 0 || column >= static_cast<std::ptrdiff_t>(width_) ||
        row >= static_cast<std::ptrdiff_t>(height_)) {
        return;
    }
    const std::size_t first =
        (static_cast<std::size_t>(row) * width_ + static_cast<std::size_t>(column)) * channels_;
    for (unsigned i = 0; i < 3; ++i) {
        const double light = 255.0 - darkness * (255.0 - (colour >> (16 - 8 * i) & 0xFFU));
        char &byte = bytes_[first + i];
        byte = static_cast<char>(
            std::min<int>(static_cast<unsigned char>(byte), static_cast<int>(light)));
    }
}

void Picture::stroke(const PagePoint &from, const PagePoint &to, PageColour colour) {
    const auto length = static_cast<double>(std::hypot(to.x - from.x, to.y - from.y));
    const int steps = std::max(1, static_cast<int>(length * PixelsPerCm));
    for (int i = 0; i <= steps; ++i) {
        const float part = static_cast<float>(i) / static_cast<float>(steps);
        dot(static_cast<double>(std::lerp(from.x, to.x, part)),
            static_cast<double>(std::lerp(from.y, to.y, part)), colour);
    }
}

void Picture::box(double left, double bottom, double right, double top, PageColour colour,
                  double darkness) {
    constexpr double step = 1.0 / PixelsPerCm;
    const int rows = static_cast<int>(std::ceil((top - bottom) / step));
    const int columns = static_cast<int>(std::ceil((right - left) / step));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            dot(left + column * step, bottom + row * step, colour, darkness);
        }
    }
}

Picture pictureOf(const RecordSurface &page) {
    constexpr double inkOfLetters = 0.2;
    constexpr double dotRadius = 0.063; // cm
    Picture picture;
    for (const RecordedItem &item : page.items()) {
        const auto x = static_cast<double>(item.points[0].x);
        const auto y = static_cast<double>(item.points[0].y);
        if (item.kind == RecordedItem::Kind::Text) {
            const auto length = static_cast<double>(textWidthInEms(item.text) *
                                                    EmPerCharacterWidth * item.characterWidth);
            const auto height = static_cast<double>(CapitalHeight * item.characterHeight);
            const bool upright = item.degrees != 0.0F;
            picture.box(upright ? x - height : x, y, upright ? x : x + length,
                        upright ? y + length : y + height, item.colour, inkOfLetters);
        } else if (item.kind == RecordedItem::Kind::Marker && item.marker == 14) {
            picture.box(x - dotRadius, y - dotRadius, x + dotRadius, y + dotRadius, item.colour,
                        0.8);
        } else if (item.kind == RecordedItem::Kind::Marker) {
            const PagePoint at = item.points[0];
            const float arm = static_cast<float>(dotRadius);
            picture.stroke({at.x - arm, at.y}, {at.x + arm, at.y}, item.colour);
            picture.stroke({at.x, at.y - arm}, {at.x, at.y + arm}, item.colour);
        } else if (item.kind == RecordedItem::Kind::Area) { // upright rectangles, all of them
            const auto corners = std::minmax_element(
                item.points.begin(), item.points.end(),
                [](const PagePoint &a, const PagePoint &b) { return a.x + a.y < b.x + b.y; });
            picture.box(static_cast<double>(corners.first->x),
                        static_cast<double>(corners.first->y),
                        static_cast<double>(corners.second->x),
                        static_cast<double>(corners.second->y), item.colour, 1.0);
        } else {
            for (std::size_t i = 1; i < item.points.size(); ++i) {
                picture.stroke(item.points[i - 1], item.points[i], item.colour);
            }
            if (item.kind == RecordedItem::Kind::Polygon) {
                picture.stroke(item.points.back(), item.points.front(), item.colour);
            }
        }
    }
    return picture;
}

double correlation(const InkMap &a, const InkMap &b) {
    const double meanA = a.total() / static_cast<double>(a.ink.size());
    const double meanB = b.total() / static_cast<double>(b.ink.size());
    double product = 0.0;
    double squareA = 0.0;
    double squareB = 0.0;
    for (std::size_t i = 0; i < a.ink.size(); ++i) {
        product += (a.ink[i] - meanA) * (b.ink[i] - meanB);
        squareA += (a.ink[i] - meanA) * (a.ink[i] - meanA);
        squareB += (b.ink[i] - meanB) * (b.ink[i] - meanB);
    }
    return product / std::sqrt(squareA * squareB);
}

namespace {

/// The most ink of a cell and those around it: a line on the edge of two cells may lie in either.
double mostAround(const InkMap &map, std::size_t column, std::size_t row) {
    double most = 0.0;
    for (std::size_t r = row - std::min<std::size_t>(row, 1); r < std::min(row + 2, map.Down);
         ++r) {
        for (std::size_t c = column - std::min<std::size_t>(column, 1);
             c < std::min(column + 2, map.Across); ++c) {
            most = std::max(most, map.at(c, r));
        }
    }
    return most;
}

} // namespace

std::string inkWithoutCounterpart(const InkMap &a, const InkMap &b) {
    constexpr double some = 0.01;
    constexpr double trace = 0.001;
    std::string places;
    for (std::size_t row = 0; row < InkMap::Down; ++row) {
        for (std::size_t column = 0; column < InkMap::Across; ++column) {
            if (a.at(column, row) > some && mostAround(b, column, row) < trace) {
                places += " " + std::to_string(column) + "," + std::to_string(row);
            }
        }
    }
    return places;
}

} // namespace keldrin
