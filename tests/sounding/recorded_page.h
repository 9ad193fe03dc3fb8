#pragma once

#include "page/surfaces/record_surface.h"
#include "page/text_metrics.h"
#include "sounding/page_layout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace keldrin {

// What tests ask of a recorded page. Places are page cm.

struct Box {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
};

/// What a text covers of the page; level or upright.
inline Box boxOf(const RecordedItem &text) {
    const auto height = static_cast<double>(text.characterHeight);
    const double length =
        static_cast<double>(textWidthInEms(text.text) * EmPerCharacterWidth * text.characterWidth);
    const double above = static_cast<double>(CapitalHeight) * height;
    const double below = static_cast<double>(DescenderDepth) * height;
    const auto x = static_cast<double>(text.points[0].x);
    const auto y = static_cast<double>(text.points[0].y);
    return text.degrees == 0.0F ? Box{x, y - below, x + length, y + above}
                                : Box{x - above, y, x + below, y + length};
}

// More than a rounded touch.
inline bool overlap(const Box &a, const Box &b) {
    constexpr double hair = 1e-5;
    return a.left < b.right - hair && b.left < a.right - hair && a.bottom < b.top - hair &&
           b.bottom < a.top - hair;
}

inline bool isInside(const PagePoint &point, const PageFrame &frame) {
    constexpr float hair = 1e-3F;
    return point.x > frame.left - hair && point.x < frame.right + hair &&
           point.y > frame.bottom - hair && point.y < frame.top + hair;
}

/// Lines and marks are where `inFrame` says they may be, texts on the page, and no text touches
/// another.
template <class InFrame>
void expectTidyPage(const RecordSurface &page, const InFrame &inFrame, const std::string &what) {
    constexpr double hair = 1e-4;
    std::vector<RecordedItem> seen;
    for (const RecordedItem &item : page.items()) {
        if (item.kind != RecordedItem::Kind::Text) {
            for (const PagePoint &point : item.points) {
                EXPECT_TRUE(inFrame(point)) << what << ": " << point.x << " " << point.y;
            }
            continue;
        }
        const Box box = boxOf(item);
        EXPECT_TRUE(box.left >= -hair && box.bottom >= -hair &&
                    box.right <= static_cast<double>(PageWidthCm) + hair &&
                    box.top <= static_cast<double>(PageHeightCm) + hair)
            << what << ": " << item.text;
        for (const RecordedItem &other : seen) {
            EXPECT_FALSE(overlap(box, boxOf(other)))
                << what << ": " << item.text << " | " << other.text;
        }
        seen.push_back(item);
    }
}

inline std::vector<std::string> textsOf(const RecordSurface &page) {
    std::vector<std::string> found;
    for (const RecordedItem &item : page.items()) {
        if (item.kind == RecordedItem::Kind::Text) {
            found.push_back(item.text);
        }
    }
    return found;
}

} // namespace keldrin
