#include "shell/open_project.h"

#include "messages/message_log.h"
#include "physics/apparent_resistivity.h"
#include "projectfile/model_file.h"
#include "projectfile/project_file.h"

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
    ClearLog();
    const int status = STD_File_Read(model, path);
    if (status != 0) {
        model.SoundingCount = 0;
        return status;
    }
    M1D_File_Read(model, modelPathOf(path)); // a project without a model is normal
    const auto first = model.hTrn.begin();
    if (std::any_of(first, first + model.SoundingCount, lacksApparentResistivity)) {
        ARes_Survey(model);
    }
    return 0;
}

} // namespace keldrin
