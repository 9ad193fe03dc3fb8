#include "program/batch/command.h"

#include "base/paths.h"
#include "conditioning/auto_skip_dialog.h"
#include "conditioning/further_skip.h"
#include "program/batch/batch_project.h"
#include "program/batch/output_files.h"
#include "projectfile/project_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace keldrin {

namespace {

/// An option stands for a field of the dialog.
struct SkipOption {
    std::string_view name;
    int control;
};
constexpr std::array SkipOptions = {SkipOption{"--first", AutoSkipControl::FirstWindow},
                                    SkipOption{"--last", AutoSkipControl::LastWindow},
                                    SkipOption{"--error", AutoSkipControl::ErrorFilter},
                                    SkipOption{"--cutoff", AutoSkipControl::Cutoff},
                                    SkipOption{"--negative", AutoSkipControl::NegativeFilter},
                                    SkipOption{"--slope", AutoSkipControl::SlopeFilter},
                                    SkipOption{"--noise", AutoSkipControl::NoiseFilter},
                                    SkipOption{"--noise-level", AutoSkipControl::NoiseLevel},
                                    SkipOption{"--noise-exponent", AutoSkipControl::NoiseExponent},
                                    SkipOption{"--curvature", AutoSkipControl::CurvatureFilter},
                                    SkipOption{"--bend", AutoSkipControl::SlopeChange},
                                    SkipOption{"--neighbours", AutoSkipControl::NeighbourFilter},
                                    SkipOption{"--factor", AutoSkipControl::NeighbourFactor},
                                    SkipOption{"--later", AutoSkipControl::AndLater},
                                    SkipOption{"--keep", AutoSkipControl::KeepMarks}};

struct SkipRequest {
    AutoSkipAnswers answers;
    bool cutoffGiven = false; ///< else each project has its own
    std::vector<std::string> projects;
};

// Empty when the words can be used, else what is wrong with them.
std::string readRequest(CommandWords words, SkipRequest &request) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        const auto *option = std::find_if(SkipOptions.begin(), SkipOptions.end(),
                                          [=](const SkipOption &o) { return o.name == word; });
        if (optionsEnded || word.substr(0, 2) != "--") {
            request.projects.emplace_back(word);
        } else if (word == "--") {
            optionsEnded = true;
        } else if (option == SkipOptions.end()) {
            return "unknown option " + std::string(word);
        } else {
            const std::string_view value = ++i < words.size() ? words[i] : "";
            const std::string taken =
                typeField(LiveAutoSkipDialog, option->control, value, request.answers);
            if (!taken.empty()) {
                return std::string(word) + " takes " + taken;
            }
            request.cutoffGiven = request.cutoffGiven || option->control == AutoSkipControl::Cutoff;
        }
    }
    const AutoSkipSettings &settings = request.answers.settings;
    if (settings.firstWindow > settings.lastWindow) {
        return "--first is above --last";
    }
    return request.projects.empty() ? "no project is named" : "";
}

// "24 soundings, 624 windows, 40 skipped; window range 0, error filter 37, ..."
std::string counted(const SurveyModel &model, const AutoSkipAnswers &answers) {
    const AutoSkipCounts &counts = answers.counted.counts;
    std::string text = std::to_string(model.SoundingCount) + " soundings, " +
                       std::to_string(counts.windows) + " windows, " +
                       std::to_string(counts.skipped) + " skipped";
    std::string separator = "; ";
    for (const AutoSkipFilter &filter : AutoSkipFilters) {
        text.append(separator).append(filter.name).append(" ");
        text += std::to_string(counts.*filter.taken);
        separator = ", ";
    }
    const std::string further = takenFurtherText(answers);
    text.append(further.empty() ? "" : ", ").append(further);
    const bool keeps = answers.further.keepMarks;
    return keeps ? text + "; earlier flags kept " + std::to_string(answers.counted.otherMarks)
                 : text;
}

// What was done, in one line; blank when the project stays as it was.
std::string skipWindows(BatchProject &project, const SkipRequest &request) {
    SurveyModel &model = project.model;
    AutoSkipAnswers answers = request.answers;
    float &cutoff = model.control.DataCutoff;
    cutoff = request.cutoffGiven ? answers.cutoff : cutoff;
    limitAutoSkip(model, answers.settings, cutoff);
    const SkipPlan plan = planAutoSkip(model, answers.settings, cutoff, answers.further);
    answers.counted = {plan.counts, plan.further, marksBesidePlan(model, plan)};
    applySkipPlan(model, plan, answers.further.keepMarks);
    const WriteOutcome outcome = STD_File_Write(model, project.path);
    if (!outcome.written) {
        project.fail(outcome.failure);
        return "";
    }
    std::string text = counted(model, answers);
    for (const std::string &kept : outcome.kept) {
        text.append(", the old file is kept as ").append(kept);
    }
    return text;
}

bool skipProject(const std::string &file, const SkipRequest &request) {
    BatchProject project;
    std::string done;
    if (!isProjectPath(file)) {
        project.fail("only *.std files are written");
    } else if (project.open(file)) {
        done = skipWindows(project, request);
    }
    project.printLine(file, done);
    return !project.failed();
}

} // namespace

int skipCommand(CommandWords words) {
    SkipRequest request;
    const std::string fault = readRequest(words, request);
    if (!fault.empty()) {
        std::fprintf(stderr, "keldrin-batch skip: %s\n", fault.c_str());
        return ExitUsage;
    }
    AnsweringBackend backend;
    return runOverFiles(
        "keldrin-batch skip", backend, request.projects, "",
        [&](const std::string &file, bool /*taken*/) { return skipProject(file, request); });
}

} // namespace keldrin
