#pragma once

#include "line/line_columns.h"
#include "line/section_limits.h"
#include "model/survey_model.h"
#include "page/surfaces/surface.h"
#include "sounding/page_layout.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// The section of a line: above, the apparent resistivity of the windows by time and distance; in
// the middle the layered models by elevation; below, the misfit of each sounding. It is laid out
// from the survey once, and then drawn, and asked what lies at a place, as often as need be. Places
// on the page are its centimetres, 24 by 18.

/// A plot of the section: its frame on the page and its vertical axis from bottom to top.
struct SectionPlot {
    PageFrame frame;
    double bottom = 0.0;
    double top = 1.0;
    bool logarithmic = false;
};

/// A window or layer, drawn in the colour of its resistivity.
struct SectionCell {
    int column = 0;      ///< index in SectionPage::columns
    int index = 0;       ///< of the window or layer, from 0
    double bottom = 0.0; ///< on the axis of its plot
    double top = 0.0;
    float resistivity = 0.0F; ///< ohm-m
    bool faded = false;       ///< below the depth that the data see
};

struct SectionPage {
    std::vector<std::string> title;
    std::string lengthUnits;
    double left = 0.0; ///< limits of the distances, LengthUnits
    double right = 1.0;
    std::vector<LineColumn> columns;
    std::vector<std::string> stations; ///< of the columns; blank where they are missing
    AxisLimits resistivity;            ///< limits of the colours, ohm-m
    int colours = 0;                   ///< of colourScales(), from 0

    SectionPlot times;                ///< msec, downward
    std::vector<SectionCell> windows; ///< by column, then by time; none for skipped windows

    std::optional<SectionPlot> heights; ///< LengthUnits; none without models
    bool hasElevations = false;         ///< else heights are minus depths
    std::vector<double> ground;         ///< of the columns, on the axis of the heights
    std::vector<SectionCell> layers;    ///< by column, downward; none below the lowest height
    double exaggeration = 1.0;

    std::optional<SectionPlot> misfits; ///< in units of the data errors; none without models
    std::vector<float> misfit;          ///< of the columns; missing without calculated data
};

/// Lays the page out. Soundings of other transmitters, skipped windows and values that are no
/// resistivity have no cells; nothing reaches across gaps (see cellsOf). Colours go from the 2nd to
/// the 98th percentile of the windows and of the layers that the data see, in round limits.
/// survey     not changed
/// path       of the project; its file name stands in the title
/// pageShape  height over width of the page as the user sees it, for the exaggeration
SectionPage sectionPage(const SurveyModel &survey, const SectionLimits &limits,
                        std::string_view path, double pageShape = PageShape);

/// Draws a page on a cleared surface; afterwards the view is the page in centimetres.
/// marked   ordinal of a sounding to be marked; 0 none
/// returns  false, with nothing drawn, on a surface that cannot fill areas
bool drawSection(const SectionPage &page, int marked = 0);

/// What lies at a place of a page of the line.
struct LineHit {
    enum class Kind { Nothing, Window, Layer, Misfit };

    int sounding = 0;          ///< ordinal from 1, 0 in a gap and outside the plots
    Kind kind = Kind::Nothing; ///< a sounding has nothing where it has no cell
    int index = 0;             ///< of the window or layer, from 0
    float value = 0.0F;        ///< resistivity in ohm-m, misfit, or dB/dt
    double bottom = 0.0;       ///< of the window in msec, of the layer in LengthUnits
    double top = 0.0;
};

/// What the place x, y in page cm shows.
LineHit sectionHit(const SectionPage &page, float x, float y);

/// What a hit says beside its sounding, for the status bar: "0.312 msec   45.2 ohm-m". Blank for
/// Nothing.
std::string sectionText(const SectionPage &page, const LineHit &hit);

} // namespace keldrin
