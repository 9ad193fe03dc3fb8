#include "review/review_panel.h"

#include "toolkit/control_ids.h"

#include <algorithm>
#include <array>
#include <string>

namespace keldrin {

namespace {

using enum ControlKind;

// Doubled until some twenty presses cross the line.
int pageStep(int soundings) {
    constexpr int mostSteps = 20;
    int step = 1;
    while (soundings / step > mostSteps) {
        step *= 2;
    }
    return step;
}

FieldLimits stationLimits(const PanelValues &panel) {
    return {1.0, static_cast<double>(std::max(2, panel.soundings)), pageStep(panel.soundings)};
}

std::string lastStation(const PanelValues &panel) {
    return std::to_string(panel.soundings);
}

constexpr ControlSpec button(int id, std::string_view caption, bool sameRow) {
    return {.id = id, .kind = Button, .label = caption, .sameRow = sameRow};
}

// An entry of the list of formats.
constexpr ControlSpec listed(int id, std::string_view caption) {
    return {.id = id, .kind = Button, .label = caption, .listedBy = ReviewControl::Export};
}

constexpr ControlSpec text(int id, std::string_view label) {
    return {.id = id, .label = label};
}

constexpr ControlSpec help(int id, std::string_view label) {
    return {.id = id, .label = label, .look = StaticLook::Help};
}

// Stands below the frame before it.
constexpr ControlSpec outside(ControlSpec spec) {
    spec.part = DialogPart::Plain;
    return spec;
}

constexpr std::array PanelControls = {
    groupTitle(ReviewControl::StationTitle, "Select Station"),
    text(ReviewControl::FirstStation, "1"),
    ControlSpec{.id = ReviewControl::Station,
                .kind = Trackbar,
                .limits = {1.0, 2.0}, // until the record gives its own
                .field = fieldOf<&PanelValues::station>(),
                .limitsFrom = givenBy<stationLimits>(),
                .sameRow = true},
    ControlSpec{.id = ReviewControl::LastStation,
                .label = "1",
                .field = shownBy<lastStation>(),
                .sameRow = true},
    ControlSpec{.id = ReviewControl::Place,
                .kind = Text,
                .label = "Go to",
                .field = fieldOf<&PanelValues::place>(),
                .byEnter = true},
    button(ReviewControl::Previous, "&Previous", false),
    button(ReviewControl::Next, "&Next", true),
    outside(button(ReviewControl::PrinterPlot, "Printer Plot", false)),
    button(ReviewControl::Export, "Export...", true),
    listed(ReviewControl::ToHpgl, "To HPGL File"),
    listed(ReviewControl::ToMetafile, "To WMF File"),
    listed(ReviewControl::ToPng, "To PNG File"),
    listed(ReviewControl::ToPdf, "To PDF File"),
    listed(ReviewControl::ToSvg, "To SVG File"),
    listed(ReviewControl::AllToPdf, "All to PDF"),
    button(ReviewControl::EditLimits, "Edit Plot Limits", false),
    button(ReviewControl::AutoSkip, "&Auto Skip...", true),
    button(ReviewControl::Exit, "E&xit Review", false),
    button(ButtonCancel, "Cancel Changes", true),
    help(ReviewControl::KeysHelp, "F1 lists what mouse and keys do."),
};

} // namespace

const DialogForm<PanelValues> ReviewDialog = DialogSpec{
    .number = 102,
    .caption = "Review TEM data and models",
    .controls = PanelControls, // Enter presses no button
    .inRoot = true,
    .place = DialogPlace::Docked,
};

} // namespace keldrin
