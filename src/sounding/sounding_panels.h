#pragma once

#include "base/real.h"
#include "model/survey_model.h"
#include "page/plot_scale.h"
#include "sounding/page_layout.h"
#include "sounding/plot_limits.h"

#include <cmath>
#include <vector>

namespace keldrin {

// The plots of the sounding page in both of its styles: where they lie, what their axes are, and
// which marks stand there for windows.

/// A plot of the page.
struct PagePanel {
    PageFrame frame;    ///< page cm
    PageFrame viewport; ///< the same in fractions of the page
    PlotScale across;   ///< msec, or ohm-m
    PlotScale upward;
    bool arcSinh = false; ///< values stand at their ArcSinh
    float foot = 0.0F;    ///< where a logarithmic data axis has values that are not above 0; 0 none

    [[nodiscard]] bool isUsable() const { return across.isUsable() && upward.isUsable(); }
    [[nodiscard]] bool holds(float x, float y) const {
        return x >= frame.left && x <= frame.right && y >= frame.bottom && y <= frame.top;
    }
    /// Where a value stands on the axis upward, in its units.
    [[nodiscard]] float placeOf(float value) const {
        return arcSinh ? ArcSinh(value) : isAtFoot(value) ? foot : value;
    }
    [[nodiscard]] bool isAtFoot(float value) const { return foot > 0.0F && !(value > 0.0F); }
    [[nodiscard]] double valueAt(double place) const { return arcSinh ? std::sinh(place) : place; }
};

PagePanel dataPanel(const PlotLimits &limits);
PagePanel resistivityPanel(const PlotLimits &limits); ///< the standard page has it on the data
PagePanel misfitPanel(const PlotLimits &limits);      ///< of the presentation alone
PagePanel modelPanel(const PlotLimits &limits);

/// The ends of an error bar on the axis upward.
struct ErrorBar {
    float low = 0.0F;
    float high = 0.0F;
};

/// place    of the value on the axis
/// halfBar  in ArcSinh units, or as a logarithm
inline ErrorBar errorBar(const PagePanel &panel, float place, float halfBar) {
    if (!panel.upward.logarithmic) {
        return {place - halfBar, place + halfBar};
    }
    const float factor = std::exp(halfBar);
    return {place / factor, place * factor};
}

/// Makes a panel the plot in force.
void layPanel(const PagePanel &panel);

/// What a mark says of its window.
enum class MarkKind { Observed, Resistivity, Misfit };

/// The marks of one kind, all on one plot.
struct MarkedPanel {
    MarkKind kind = MarkKind::Observed;
    PagePanel panel;
    std::vector<float> values; ///< by window, in units of the mark; missing: no mark
};

/// All marks of a sounding's page that stand for windows. Misfits are in standard deviations.
std::vector<MarkedPanel> markedPanels(const ControlValues &control, const SoundingRecord &sounding,
                                      const PlotLimits &limits);

} // namespace keldrin
