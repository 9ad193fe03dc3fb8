#include "shell/open_project.h"

#include "projectfile/model_file.h"
#include "projectfile/project_file.h"
#include "screen/log_view.h"
#include "shell/watched_survey.h"
#include "toolkit/toolkit.h"

#include <algorithm>

namespace keldrin {

namespace {

bool lacksApparentResistivity(const SoundingRecord &record) {
    const auto *first = record.AResObs.begin();
    return std::any_of(first, first + record.NumTW,
                       [](float resistivity) { return !isPresent(resistivity); });
}

} // namespace

int OpenProject(SurveyModel &model, std::string &path) {
    constexpr int noModelFile = 2; // which is normal
    ClearLog();
    int status = STD_File_Read(model, path);
    if (status == 0) {
        status = M1D_File_Read(model, modelPathOf(path));
    }
    if (status != 0 && status != noModelFile) {
        model.SoundingCount = 0;
        return status;
    }
    if (std::ranges::any_of(model.soundings(), lacksApparentResistivity)) {
        surveyApparentResistivities(model);
    }
    ToolkitRecentFile(path);
    return 0;
}

} // namespace keldrin
