#pragma once

namespace keldrin {

// What the pages of the review share: a page of 24 by 18 cm, and its text sizes as fractions of
// the page's width and height.

struct PageTextSize {
    float width = 0.0F;
    float height = 0.0F;
};

inline constexpr PageTextSize LabelSize = {0.00872695F, 0.0196111F};      ///< 10 points
inline constexpr PageTextSize TitleSize = {0.0104723F, 0.0235333F};       ///< 12 points
inline constexpr PageTextSize NumberSize = {0.00698156F, 0.0156889F};     ///< 8 points
inline constexpr PageTextSize SmallTickSize = {0.00349078F, 0.00784444F}; ///< lengths of ticks
inline constexpr PageTextSize MarkerSize = {0.00523617F, 0.0117667F};

/// Letters of a size in points on paper.
constexpr PageTextSize textSizeOf(float points) {
    return {LabelSize.width * points / 10.0F, LabelSize.height * points / 10.0F};
}

/// A rectangle of the page in centimetres.
struct PageFrame {
    float left = 0.0F;
    float bottom = 0.0F;
    float right = 0.0F;
    float top = 0.0F;
};

inline constexpr PageFrame DataFrame = {1.5F, 1.5F, 11.5F, 17.5F}; ///< of the sounding plot
inline constexpr PageFrame ModelFrame = {13.5F, 1.5F, 22.5F, 17.5F};

// Of the sounding plot for presentation, whose texts stand above.
inline constexpr PageFrame PresentedDataFrame = {2.0F, 7.7F, 11.8F, 15.3F};
inline constexpr PageFrame PresentedResistivityFrame = {2.0F, 3.8F, 11.8F, 7.3F};
inline constexpr PageFrame PresentedMisfitFrame = {2.0F, 1.5F, 11.8F, 3.4F};
inline constexpr PageFrame PresentedModelFrame = {14.2F, 1.5F, 22.2F, 15.3F};

/// Clears the page and sets units of 0..24 by 0..18 over all of it, black, horizontal text.
void beginReviewPage();

void selectTextSize(const PageTextSize &size);

} // namespace keldrin
