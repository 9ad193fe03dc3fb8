#pragma once

#include "model/survey_model.h"
#include "page/drawing_clip.h"
#include "page/surfaces/surface.h"
#include "sounding/sounding_panels.h"

#include <vector>

namespace keldrin {

// The layered model of the page for presentation.

/// A layer as a step of the model.
struct LayerStep {
    float top = 0.0F;         ///< LengthUnits below the surface, negative
    float bottom = 0.0F;      ///< below the top
    float resistivity = 0.0F; ///< ohm-m
    float low = 0.0F;         ///< ends of the band of its error, ohm-m
    float high = 0.0F;
    float fade = 0.0F; ///< 0 where the data see the layer; towards 1 the less they see of it
};

struct ModelSteps {
    std::vector<LayerStep> steps; ///< layers that have a resistivity and a thickness, from the top
    bool hasErrors = false;       ///< the model file gives errors and sensitivities of the layers
    float depthOfData = 0.0F;     ///< lower edge of the last layer that the data see; 0: of none
};

/// The steps of a sounding's model.
///
/// Rerr is 100 (exp(sd) - 1) percent, sd the deviation of ln(resistivity): the band reaches from
/// 1/(1 + Rerr/100) to 1 + Rerr/100 times the resistivity. A model file without errors gives those
/// of the background to all layers, and no sensitivity to any; such a model has neither band nor
/// depth of the data.
ModelSteps modelSteps(const SoundingRecord &sounding);

inline constexpr PageColour BandColour = 0xB9CBE4;
inline constexpr float ModelLineWidth = 1.5F; ///< points: two pixels of a usual window
inline constexpr float ThinLineWidth = 0.4F;  ///< points

/// Draws the bands of the errors on the panel of the model, which must be the plot in force. A
/// device that cannot fill areas shows their outlines.
void drawModelBands(const ModelSteps &model);

/// Draws the steps of the model on its panel, which must be the plot in force, and a dashed line at
/// the depth of the data. A device that cannot fill areas shows dashes in place of steps that the
/// data do not see.
void drawModelSteps(const ModelSteps &model, const PagePanel &panel);

/// A straight line in dashes, in the colour and the width now set. Page cm.
void drawDashes(const ClipSegment &line);

} // namespace keldrin
