#include "shell/new_model.h"

#include "base/ascii.h"
#include "base/clock.h"
#include "base/line_reader.h"
#include "base/paths.h"
#include "base/version.h"
#include "conditioning/data_cutoff.h"
#include "conditioning/data_input_dialog.h"
#include "conditioning/duplicates.h"
#include "conditioning/line_azimuth_dialog.h"
#include "conditioning/survey_configuration.h"
#include "conditioning/window_widths.h"
#include "import/amira/file.h"
#include "import/avg_file.h"
#include "import/import_steps.h"
#include "import/station_file.h"
#include "import/survey_information.h"
#include "import/z_file.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"
#include "screen/log_view.h"
#include "shell/sounding_positions.h"
#include "shell/watched_survey.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace keldrin {

namespace {

/// The two passes of the readers of one kind of file.
struct ReaderFamily {
    std::array<std::string_view, 3> extensions; ///< upper case; blank entries are unused
    int (*countPass)(SurveyModel &, const std::string &);
    int (*readPass)(SurveyModel &, const std::string &, std::string_view lineLabel);
};

constexpr std::array Families = {
    ReaderFamily{{".AVG"}, AVG_Count, AVG_Read},
    ReaderFamily{{".AMR", ".TEM", ".DAT"}, AMR_Count, AMR_Read},
    ReaderFamily{{".Z"}, Z_Count, Z_Read},
};

// The extension alone decides, and the first family that it holds: ".data" counts as ".dat".
const ReaderFamily *familyOf(std::string_view path) {
    const std::string extension = Str_Upper(extensionOf(path).substr(0, 4));
    for (const ReaderFamily &family : Families) {
        for (const std::string_view known : family.extensions) {
            if (!known.empty() && holds(extension, known)) {
                return &family;
            }
        }
    }
    return nullptr;
}

int chooseDataFile(std::string &path) {
    if (!trimBlanks(path).empty()) {
        return 0;
    }
    const bool chosen = ToolkitFileChooser("TEM data file|*.avg;*.z;*.tem;*.amr;*.dat|",
                                           ChooseExisting, path, "Open file holding TEM data.");
    return chosen && !trimBlanks(path).empty() ? 0 : 2;
}

int chooseReader(const std::string &input, const ReaderFamily *&family) {
    const std::string name(fileNameOf(input));
    family = familyOf(input);
    if (family == nullptr) {
        ReportError({"ERROR: " + name + " is not a recognizable data file.",
                     "Expecting data file extensions of .avg, .z, .tem, .amr or .dat"});
        return 1;
    }
    LineReader reader(AvgLineLimit);
    if (!reader.open(input)) {
        ReportError({"ERROR: Could not open data file", input, reader.errorText()});
        return 1;
    }
    return 0;
}

int allocateForSelectedLine(SurveyModel &model) {
    return STD_Allocate_hTrn(model, soundingsNeeded(model.lines.selected()));
}

std::string selectedLabel(const LineTable &lines) {
    return lines.selected().LineLabel.str();
}

// Settles the line azimuth between header and station file; an unset trend counts as different.
void settleAzimuth(ControlValues &control, float trend) {
    if (control.LineAzimuth < -360.0F && trend >= -360.0F) {
        control.LineAzimuth = trend;
    } else if (!(std::fabs(control.LineAzimuth - trend) <= 10.0F)) {
        VerifyLineAzimuth(trend, control.LineAzimuth);
    }
}

StationTable readStations(SurveyModel &model, const std::string &input) {
    StationTable table;
    if (Stn_File_Input(sideFilePath(input, ".stn"), table) != 0 || table.size() == 0) {
        return tableFromSoundings(model);
    }
    settleAzimuth(model.control, table.stnAzimuth);
    if (table.stnScale > 1.0E-6F) {
        model.control.StnScale = table.stnScale;
    }
    return table;
}

void writeHeaderLines(ControlValues &control, const std::string &displayName) {
    control.Header[0] = writerStamp(clockNow());
    control.Header[1] = control.JobName;
    if (!control.LineName.isBlank()) {
        control.Header[1] = control.JobName.str() + "  Line " + control.LineName.str();
    }
    control.Header[2] = control.JobFor.isBlank() ? "" : "for " + control.JobFor.str();
    control.Header[3] = "Data from " + displayName;
}

std::string projectPathFor(const SurveyModel &model, const std::string &input,
                           const NewModelOptions &options) {
    const std::string base = options.outputDirectory.empty()
                                 ? std::string(withoutExtension(input))
                                 : joinPath(options.outputDirectory, baseNameOf(input));
    const bool otherLine = model.lines.LineCount > 1 && pathExists(base + ".std");
    return (otherLine ? nameWithLine(base, model.control.LineName.view()) : base) + ".std";
}

// Names the project and lets the user settle the configuration.
int configure(SurveyModel &model, std::string &path, WriteOutcome &trial) {
    return EditSurveyConfiguration(
        model, path, [&](const ControlValues & /*before*/, const std::string &chosen) {
            trial = STD_File_Write(model, chosen, WriteKind::Trial);
            return trial.written;
        });
}

// A project that cannot be written stays in memory, and has no path until it is saved. A trial that
// failed has been reported, and is not repeated.
void writeNewProject(SurveyModel &model, const std::string &input, std::string &path,
                     WriteOutcome outcome, const NewModelOptions &options) {
    if (outcome.written) {
        outcome = STD_File_Write(model, path);
    }
    if (outcome.written) {
        ToolkitRecentFile(input);
        ToolkitRecentFile(path);
    } else {
        path.clear();
        ReportNotice(NoticeLevel::Status,
                     {"The new project is not on the disk; Save writes it elsewhere."});
    }
    if (options.outcome != nullptr) {
        *options.outcome = std::move(outcome);
    }
}

// What the field data file and its side files say, as soundings of one line.
int readFieldData(SurveyModel &model, const ReaderFamily &family, const std::string &input) {
    model.preset.TxByOffset.clear();
    Mde_File_Input(model, sideFilePath(input, ".mde"));
    int status = family.countPass(model, input);
    if (status == 0) {
        status = VerifyDataInput(model);
    }
    if (status == 0) {
        status = allocateForSelectedLine(model);
    }
    if (status == 0) {
        status = family.readPass(model, input, selectedLabel(model.lines));
    }
    return status;
}

int buildSteps(SurveyModel &model, std::string &path, const NewModelOptions &options) {
    int status = chooseDataFile(path);
    if (status != 0) {
        return status;
    }
    const std::string input = existingForm(path);
    const ReaderFamily *family = nullptr;
    status = chooseReader(input, family);
    if (status != 0) {
        return status;
    }
    const std::string displayName(fileNameOf(input));
    showDataTitle(displayName);
    status = readFieldData(model, *family, input);
    if (status != 0) {
        return status;
    }
    AverageDuplicateTransients(model);
    SetWindowWidths(model);
    deriveTimeRange(model);
    const StationTable stations = readStations(model, input);
    settleTxByOffset(model);
    writeHeaderLines(model.control, displayName);
    setDefaultTxWaveform(model.control); // field data files give ramp and frequency only
    path = projectPathFor(model, input, options);
    WriteOutcome trial;
    status = configure(model, path, trial);
    if (status != 0) {
        return status;
    }
    positionSoundings(model, stations);
    ApplyDataCutoff(model);
    surveyApparentResistivities(model);
    writeNewProject(model, input, path, std::move(trial), options);
    return 0;
}

} // namespace

int BuildNewModel(SurveyModel &model, std::string &path, const NewModelOptions &options) {
    ClearLog();
    model.SoundingCount = 0;
    model.source = {};
    MD_Init(model.metadata, true);
    model.metadata.Line.Azimuth.value = MissingValue; // so that a read azimuth differs
    STD_Init_Namelist(model);
    const int status = buildSteps(model, path, options);
    if (status != 0) {
        model.SoundingCount = 0;
        path.clear(); // the data file's own path must never be written as a project
    }
    return status;
}

std::string nameWithLine(std::string_view base, std::string_view lineName) {
    std::string name(lineName);
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return std::string_view("/\\:*?\"<>| ").find(c) != std::string_view::npos; },
        '-');
    return std::string(base) + "_" + name;
}

void reportAbortedBuild() {
    ReportNotice(NoticeLevel::Box, {"ERROR: New model build aborted.",
                                    "Retry New, Open an existing model or Exit program."});
}

void showDataTitle(std::string_view displayName) {
    WindowTitle(std::string(ProgramName) + std::string(ProgramVersionText) + " updated " +
                std::string(ProgramDate) + ", data from " + std::string(cutText(displayName, 64)));
}

} // namespace keldrin
