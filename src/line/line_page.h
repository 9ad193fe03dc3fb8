#pragma once

#include <functional>
#include <string>

namespace keldrin {

/// A page that shows the line as a whole, made of a survey for the window as it is now. Soundings
/// are given by their ordinals from 1, places in centimetres of the page of 24 by 18.
struct LinePage {
    /// Draws the page on a cleared surface.
    /// marked  the sounding that the user is at; 0 none
    std::function<void(int marked)> draw;
    /// The sounding that a place stands for; 0 none.
    std::function<int(float x, float y)> soundingAt;
    /// What lies under a place, in one line; blank where there is nothing to say.
    std::function<std::string(float x, float y)> pointerText;
};

} // namespace keldrin
