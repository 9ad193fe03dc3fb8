#pragma once

#include "model/survey_model.h"
#include "review/review_history.h"
#include "text/ordinal_list.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace keldrin {

// Skip marks that go beyond the point under the mouse. Windows without an observed value are left
// alone; windows of two soundings are the same when their times agree to a thousandth.

/// Does something to marks, and perhaps to the error threshold, and gives what it has changed, in
/// whatever soundings.
/// station  ordinal of the sounding on show, from 1
MarkStep changesOf(SurveyModel &model, int station, const std::function<void()> &act);

/// The windows, from 0, that an action would mark, found by doing it to a sounding and taking it
/// back.
std::vector<std::size_t> windowsAimedAt(SoundingRecord &sounding, const std::function<void()> &act);

/// Sets or clears the marks of a window and of all later ones.
/// flag  as in review_skip.h
void markFrom(SoundingRecord &sounding, std::size_t window, int flag);

/// Sets or clears the marks of some windows of a sounding in all soundings of the line.
void markInAll(SurveyModel &model, int station, std::span<const std::size_t> windows, int flag);

/// Gives the soundings of a list the marks, set and not set, of one of them.
/// station  ordinal, from 1
void copyMarks(SurveyModel &model, int station, std::span<const OrdinalRange> to);

} // namespace keldrin
