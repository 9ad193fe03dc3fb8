#include "shell/start_file.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "shell/new_model.h"
#include "shell/open_project.h"
#include "shell/unsaved_marks.h"
#include "toolkit/toolkit.h"

namespace keldrin {

std::string ChooseStartFile(std::string_view defaultExtension) {
    std::string path;
    if (ToolkitArgumentCount() >= 1) {
        path = trimRight(ToolkitArgument(1));
    }
    if (!path.empty()) {
        if (fileNameOf(path).find('.') == std::string_view::npos) {
            path += defaultExtension;
        }
        path = existingForm(path);
        if (pathExists(path)) {
            return path;
        }
        ReportError({"ERROR: There is no file of this name:", path});
    }
    path.clear();
    const bool chosen =
        ToolkitFileChooser("KELDRIN *.std or TEM data files|*.std;*.avg;*.z;*.tem;*.amr;*.dat|",
                           ChooseExisting, path, "Select KELDRIN *.std or TEM data file");
    if (!chosen || trimBlanks(path).empty()) {
        ShutDown();
    }
    return path;
}

int StartFile(SurveyModel &model, std::string &path) {
    path = ChooseStartFile(".std");
    if (holds(Str_Upper(extensionOf(path)).substr(0, 4), ".STD")) {
        const int status = OpenProject(model, path);
        if (status == 0) {
            offerUnsavedMarks(model, path);
        }
        return status;
    }
    const int status = BuildNewModel(model, path);
    if (status != 0) {
        reportAbortedBuild();
    }
    return status;
}

} // namespace keldrin
