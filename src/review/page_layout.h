#pragma once

namespace keldrin {

// What the pages of the review share: a page of 24 by 18 cm, and its text sizes as fractions of
// the page's width and height.

struct PageTextSize {
    float width = 0.0F;
    float height = 0.0F;
};

inline constexpr PageTextSize LabelSize = {0.00872695F, 0.0196111F};      ///< 10 points
inline constexpr PageTextSize NumberSize = {0.00698156F, 0.0156889F};     ///< 8 points
inline constexpr PageTextSize SmallTickSize = {0.00349078F, 0.00784444F}; ///< lengths of ticks
inline constexpr PageTextSize MarkerSize = {0.00523617F, 0.0117667F};

inline constexpr int PlusMarker = 1;
inline constexpr int DotMarker = 14;
inline constexpr int RingMarker = 15;

/// A rectangle of the page in centimetres.
struct PageFrame {
    float left = 0.0F;
    float bottom = 0.0F;
    float right = 0.0F;
    float top = 0.0F;
};

inline constexpr PageFrame DataFrame = {1.5F, 1.5F, 11.5F, 17.5F}; ///< of the sounding plot
inline constexpr PageFrame ModelFrame = {13.5F, 1.5F, 22.5F, 17.5F};

/// Clears the page and sets units of 0..24 by 0..18 over all of it, black, horizontal text.
void beginReviewPage();

void selectTextSize(const PageTextSize &size);

} // namespace keldrin
