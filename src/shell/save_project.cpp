#include "shell/save_project.h"

#include "base/paths.h"
#include "projectfile/project_file.h"
#include "toolkit/toolkit.h"

namespace keldrin {

void SaveProject(SurveyModel &model, std::string &path) {
    std::string chosen = path;
    if (!ToolkitFileChooser("Save std file|*.std|", ChooseForSave, chosen,
                            "Save KELDRIN *.std file")) {
        return;
    }
    if (!isProjectPath(chosen)) { // as in "Save As"
        chosen += ".std";
    }
    if (Project_Files_Write(model, chosen).written) {
        path = chosen;
    }
}

} // namespace keldrin
