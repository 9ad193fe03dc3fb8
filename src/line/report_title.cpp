#include "line/report_title.h"

#include "base/index.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "base/real.h"
#include "base/sorting.h"
#include "line/line_drawing.h"
#include "line/sounding_text.h"
#include "page/drawing.h"
#include "physics/data_fit.h"
#include "projectfile/table_file.h"
#include "sounding/page_layout.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace keldrin {

namespace {

constexpr PageTextSize HeadingSize = {0.0131F, 0.0294F}; ///< 15 points
constexpr float PageLeft = 2.0F;                         ///< page cm
constexpr float ColumnWidth = 10.4F;
constexpr float LabelWidth = 4.0F;
constexpr float TitleBase = 15.9F;
constexpr float GroupsTop = 14.4F;
constexpr float RowStep = 0.58F;
constexpr float GroupGap = 0.5F;

void addRow(TitleGroup &group, std::string_view label, std::string value) {
    if (!value.empty()) {
        group.rows.push_back({std::string(label), std::move(value)});
    }
}

std::string number(float value, std::string_view unit) {
    return isPresent(value) && std::isfinite(value)
               ? messageNumber(value) + (unit.empty() ? "" : " " + std::string(unit))
               : "";
}

std::string share(int part, int whole) {
    if (whole == 0) {
        return std::to_string(part);
    }
    const double percent = 100.0 * part / whole;
    return std::to_string(part) + " of " + std::to_string(whole) + " (" +
           Number_Text(percent, "(F14.1)") + " %)";
}

/// Smallest, middle and largest of some values.
struct Spread {
    std::vector<double> values;

    void add(double value) {
        if (isPresent(value) && std::isfinite(value)) {
            values.push_back(value);
        }
    }
    [[nodiscard]] std::string range(std::string_view unit) {
        if (values.empty()) {
            return "";
        }
        const auto [low, high] = std::ranges::minmax(values);
        const std::string from = messageNumber(static_cast<float>(low));
        const std::string to = messageNumber(static_cast<float>(high));
        return (from == to ? from : from + " to " + to) +
               (unit.empty() ? "" : " " + std::string(unit));
    }
    [[nodiscard]] std::string median(std::string_view format) const {
        return values.empty() ? "" : Number_Text(upperMedian(values), format);
    }
    [[nodiscard]] std::string largest(std::string_view format) const {
        return values.empty() ? "" : Number_Text(std::ranges::max(values), format);
    }
};

/// What the soundings of the project come to.
struct SurveyCounts {
    int soundings = 0;
    int leftOut = 0; ///< of other transmitters
    int models = 0;
    int layers = 0; ///< most of a sounding
    int windows = 0;
    int skipped = 0;
    int useless = 0; ///< soundings without a usable window
    Spread stations;
    Spread windowsOfEach;
    Spread times;
    Spread misfits;
    Spread depths; ///< of the data
};

void countSounding(const ControlValues &control, const SoundingRecord &record,
                   SurveyCounts &counts) {
    ++counts.soundings;
    const std::size_t windows = windowCount(record);
    int usable = 0;
    for (std::size_t k = 0; k < windows; ++k) {
        counts.skipped += isSkipped(record.TEMerr[k]) ? 1 : 0;
        usable += isUsable(control, record, k) ? 1 : 0;
        counts.times.add(static_cast<double>(record.TWcenter[k]));
    }
    counts.windows += static_cast<int>(windows);
    counts.useless += usable == 0 ? 1 : 0;
    counts.stations.add(record.Station);
    counts.windowsOfEach.add(static_cast<double>(windows));
    counts.misfits.add(static_cast<double>(soundingFit(control, record).misfit));
    counts.models += record.NumLayer > 0 ? 1 : 0;
    counts.layers = std::max(counts.layers, record.NumLayer);
    if (const int seen = seenLayers(record); seen > 0) {
        const auto layers = std::span(record.ThkInv).first(asIndex(seen));
        float depth = 0.0F;
        for (const float thickness : layers) {
            depth += thickness;
        }
        counts.depths.add(static_cast<double>(depth));
    }
}

SurveyCounts countSurvey(const SurveyModel &survey) {
    SurveyCounts counts;
    for (const SoundingRecord &record : survey.soundings()) {
        if (isLeftOut(survey.control, record)) {
            ++counts.leftOut;
        } else {
            countSounding(survey.control, record, counts);
        }
    }
    return counts;
}

std::string lengthUnit(const ControlValues &control) {
    return std::string(nameOf(LengthUnitNames, control.LengthUnitsIndex));
}

TitleGroup surveyGroup(const ControlValues &control, std::string_view path) {
    TitleGroup group{"Survey", {}};
    addRow(group, "Project", std::string(fileNameOf(path)));
    addRow(group, "Area", control.JobArea.str());
    addRow(group, "Client", control.JobFor.str());
    addRow(group, "Contractor", control.JobBy.str());
    addRow(group, "Job number", control.JobNumber.str());
    addRow(group, "Date", control.JobDate.str());
    addRow(group, "Line", control.LineName.str());
    addRow(group, "Line azimuth", number(control.LineAzimuth, "degrees"));
    return group;
}

TitleGroup loopGroup(const ControlValues &control) {
    const std::string unit = lengthUnit(control);
    TitleGroup group{"Transmitter and receiver", {}};
    addRow(group, "Array", std::string(nameOf(SurveyTypeNames, control.SurveyTypeIndex)));
    addRow(group, "Loop",
           messageNumber(control.XTxLength) + " by " + messageNumber(control.YTxLength) + " " +
               unit +
               (control.NTxTurn > 1 ? ", " + std::to_string(control.NTxTurn) + " turns" : ""));
    if (control.SurveyTypeIndex == FixedLoop) {
        addRow(group, "Loop number", stationText(control.TxStn));
        addRow(group, "Centre",
               stationText(control.XTxCenter) + " E, " + stationText(control.YTxCenter) + " N");
    }
    addRow(group, "Loop azimuth", number(control.TxAzimuth, "degrees"));
    if (control.XRxOffset != 0.0F || control.YRxOffset != 0.0F) {
        addRow(group, "Receiver offset",
               messageNumber(control.XRxOffset) + " along, " + messageNumber(control.YRxOffset) +
                   " " + unit + " across the line");
    }
    addRow(group, "Coil area", number(control.RxArea, "m\xC2\xB2"));
    return group;
}

TitleGroup waveformGroup(const ControlValues &control) {
    TitleGroup group{"Waveform", {}};
    addRow(group, "Frequency", number(control.TxFreq, "Hz"));
    addRow(group, "Ramp", number(control.TxRamp, "usec"));
    addRow(group, "Points", control.NTxWF > 0 ? std::to_string(control.NTxWF) : "");
    addRow(group, "Time origin", control.NTxWF > 0 ? number(control.TxWFT0, "msec") : "");
    return group;
}

TitleGroup dataGroup(SurveyCounts &counts) {
    TitleGroup group{"Data", {}};
    addRow(group, "Soundings", std::to_string(counts.soundings));
    addRow(group, "Stations", counts.stations.range(""));
    addRow(group, "Windows",
           std::to_string(counts.windows) + ", " + counts.windowsOfEach.range("") +
               " for each sounding");
    addRow(group, "Times", counts.times.range("msec"));
    addRow(group, "Skipped windows", share(counts.skipped, counts.windows));
    addRow(group, "Without usable data",
           counts.useless > 0 ? std::to_string(counts.useless) + " soundings" : "");
    addRow(group, "Other transmitters",
           counts.leftOut > 0 ? std::to_string(counts.leftOut) + " soundings left out" : "");
    return group;
}

TitleGroup settingsGroup(const ControlValues &control) {
    TitleGroup group{"Inversion settings", {}};
    addRow(group, "Iterations, at most", std::to_string(control.Niteration));
    addRow(group, "Error floor", number(control.ErrorFloor, "%"));
    addRow(group, "Data cutoff", number(control.DataCutoff, "%"));
    addRow(group, "Background weight", number(control.dpWeight, ""));
    addRow(group, "Lateral weight", number(control.dxWeight, ""));
    addRow(group, "Vertical weights",
           messageNumber(control.dzWeight) + ", " + messageNumber(control.dzzWeight));
    return group;
}

TitleGroup modelGroup(const ControlValues &control, SurveyCounts &counts) {
    const std::string unit = lengthUnit(control);
    TitleGroup group{"Models", {}};
    if (counts.models == 0) {
        addRow(group, "Layered models", "none");
        return group;
    }
    addRow(group, "Layered models", share(counts.models, counts.soundings));
    addRow(group, "Layers", "up to " + std::to_string(counts.layers));
    const std::string median = counts.misfits.median("(F14.2)");
    addRow(group, "Misfit",
           median.empty() ? ""
                          : "median " + median + ", largest " + counts.misfits.largest("(F14.2)"));
    const std::string depth = counts.depths.median("(F14.0)");
    addRow(group, "Depth of the data",
           depth.empty() ? ""
                         : "median " + depth + " " + unit + ", largest " +
                               counts.depths.largest("(F14.0)") + " " + unit);
    return group;
}

float heightOf(const TitleGroup &group) {
    return RowStep * static_cast<float>(group.rows.size() + 1) + GroupGap;
}

/// Draws a group and returns the place below it.
float drawGroup(const TitleGroup &group, float left, float top) {
    selectTextSize(LabelSize);
    IGrColour("BLUE");
    ToolkitDrawText(left, top, group.heading);
    ToolkitMoveTo(left, top - 0.15F);
    ToolkitLineTo(left + ColumnWidth - 1.0F, top - 0.15F);
    IGrColour("BLACK");
    float y = top;
    for (const TitleRow &row : group.rows) {
        y -= RowStep;
        ToolkitDrawText(left, y, row.label);
        const float width = ColumnWidth - 0.8F - LabelWidth;
        ToolkitDrawText(left + LabelWidth, y, ToolkitFittingText(row.value, width));
    }
    return top - heightOf(group);
}

} // namespace

std::vector<TitleGroup> titleGroups(const SurveyModel &survey, std::string_view path) {
    SurveyCounts counts = countSurvey(survey);
    const ControlValues &control = survey.control;
    return {surveyGroup(control, path), loopGroup(control),     waveformGroup(control),
            dataGroup(counts),          settingsGroup(control), modelGroup(control, counts)};
}

std::string reportTitle(const SurveyModel &survey, std::string_view path) {
    const ControlValues &control = survey.control;
    const std::string job =
        control.JobName.isBlank() ? std::string(baseNameOf(path)) : control.JobName.str();
    return control.LineName.isBlank() ? job : job + ", line " + control.LineName.str();
}

void drawTitlePage(const SurveyModel &survey, std::string_view path) {
    beginReviewPage();
    selectTextSize(HeadingSize);
    constexpr float width = 2.0F * ColumnWidth - 1.0F;
    ToolkitDrawText(PageLeft, TitleBase, ToolkitFittingText(reportTitle(survey, path), width));
    selectTextSize(LabelSize);
    ToolkitDrawText(PageLeft, TitleBase - 0.7F, "Transient electromagnetic soundings");
    const std::vector<TitleGroup> groups = titleGroups(survey, path);
    constexpr std::size_t inFirstColumn = 3;
    float left = PageLeft;
    float top = GroupsTop;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (i == inFirstColumn) {
            left += ColumnWidth;
            top = GroupsTop;
        }
        top = drawGroup(groups[i], left, top);
    }
}

} // namespace keldrin
