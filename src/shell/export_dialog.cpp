#include "shell/export_dialog.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "export/export_line.h"
#include "messages/message_log.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_form.h"
#include "toolkit/toolkit.h"

#include <array>
#include <string_view>
#include <vector>

namespace keldrin {

namespace {

using enum ControlKind;

struct ExportAnswers {
    bool csv = true;
    bool gdf2 = true;
    bool vtk = true;
};

namespace ExportControl {
constexpr int FormatsTitle = 4031;
constexpr int Csv = 1160;
constexpr int Gdf2 = 1161;
constexpr int Vtk = 1162;
} // namespace ExportControl

constexpr std::array ExportControls = {
    groupTitle(ExportControl::FormatsTitle, "Formats"),
    checkBox(ExportControl::Csv, "CSV tables of soundings, windows and layers",
             fieldOf<&ExportAnswers::csv>()),
    checkBox(ExportControl::Gdf2, "ASEG-GDF2 point located data (.dat, .dfn)",
             fieldOf<&ExportAnswers::gdf2>()),
    checkBox(ExportControl::Vtk, "VTK curtain of the layered models",
             fieldOf<&ExportAnswers::vtk>()),
    ContinueRow,
    CancelRow,
};

const DialogForm<ExportAnswers> ExportDialog = DialogSpec{
    .number = 114,
    .caption = "Export the line",
    .defaultButton = ButtonContinue,
    .controls = ExportControls,
    .firstControl = ButtonContinue,
};

std::vector<ExportFormat> chosenFormats(const ExportAnswers &answers) {
    std::vector<ExportFormat> formats;
    const auto add = [&](bool chosen, ExportFormat format) {
        if (chosen) {
            formats.push_back(format);
        }
    };
    add(answers.csv, ExportFormat::Csv);
    add(answers.gdf2, ExportFormat::Gdf2);
    add(answers.vtk, ExportFormat::Vtk);
    return formats;
}

std::string counted(int count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

// The functions that fail report it.
void reportExport(const ExportOutcome &outcome, const std::string &base) {
    if (outcome.written() == 0) {
        return;
    }
    std::string text = counted(outcome.soundings, "sounding") + " exported to " +
                       counted(outcome.written(), "file") + " " + std::string(fileNameOf(base)) +
                       "*";
    if (outcome.leftOut > 0) {
        text += "; " + counted(outcome.leftOut, "sounding") + " of other transmitters left out";
    }
    ReportNotice(NoticeLevel::Status, {text});
}

// A name chosen with the ending of one of the files stands for all of them.
std::string baseOf(const std::string &path) {
    for (const std::string_view ending : {".csv", ".dat", ".dfn", ".vtk", ".std"}) {
        if (sameIgnoringCase(extensionOf(path), ending)) {
            return std::string(withoutExtension(path));
        }
    }
    return path;
}

} // namespace

void exportProject(const SurveyModel &survey, const std::string &path) {
    ExportAnswers answers;
    const DialogAnswer answer = askDialog(ExportDialog, answers);
    const std::vector<ExportFormat> formats = chosenFormats(answers);
    if (!answer.confirmed() || formats.empty()) {
        return;
    }
    std::string chosen(withoutExtension(path));
    if (!ToolkitFileChooser("Beginning of the names of all files|*|", ChooseForSave, chosen,
                            "Export the line")) {
        return;
    }
    const std::string base = baseOf(chosen);
    reportExport(ExportLine(survey, formats, base), base);
}

const DialogSpec &exportDialog() {
    return ExportDialog;
}

} // namespace keldrin
