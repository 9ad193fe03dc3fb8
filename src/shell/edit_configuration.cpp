#include "shell/edit_configuration.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "conditioning/configuration_change.h"
#include "conditioning/survey_configuration.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"
#include "shell/watched_survey.h"

#include <algorithm>

namespace keldrin {

namespace {

bool hasResults(const SoundingRecord &record) {
    const auto *first = record.TEMcalc.begin();
    return record.NumLayer > 0 ||
           std::any_of(first, first + record.NumTW, [](float value) { return isPresent(value); });
}

// Values that cannot be computed, or are not because the user stops it, must not stay the old ones.
void computeAnew(SurveyModel &model) {
    for (SoundingRecord &record : model.soundings()) {
        record.AResObs.fill(MissingValue);
        record.AResCalc.fill(MissingValue);
    }
    surveyApparentResistivities(model);
    if (std::ranges::any_of(model.soundings(), hasResults)) {
        ReportNotice(NoticeLevel::Status,
                     {"Models and calculated data belong to the earlier configuration."});
    }
}

// A project that got another name takes its models along; a change of case alone does not count.
bool writeConfigured(SurveyModel &model, std::string_view oldPath, const std::string &path) {
    if (!isProjectPath(path)) { // a new project that could not be written has no name
        ReportNotice(NoticeLevel::Box, {"ERROR: The project has no name and was not written.",
                                        "Give it one under \"Save As\", or by Save."});
        return false;
    }
    const bool renamed = !sameIgnoringCase(oldPath, path);
    const bool hasModels = model.SoundingCount > 0 && model.sounding(1).NumLayer > 0;
    const WriteOutcome outcome =
        renamed && hasModels ? Project_Files_Write(model, path) : STD_File_Write(model, path);
    return outcome.written;
}

} // namespace

int EditConfiguration(SurveyModel &model, std::string &path) {
    const std::string oldPath = path;
    return EditSurveyConfiguration(model, path,
                                   [&](const ControlValues &before, const std::string &chosenPath) {
                                       if (changesResistivities(before, model.control)) {
                                           computeAnew(model);
                                       }
                                       return writeConfigured(model, oldPath, chosenPath);
                                   });
}

} // namespace keldrin
