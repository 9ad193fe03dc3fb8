#include "review/review_save.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"
#include "projectfile/table_file.h"

#include <algorithm>

namespace keldrin {

bool writesEverySounding(const SurveyModel &model) {
    return std::ranges::none_of(model.soundings(), [&](const SoundingRecord &record) {
        return isLeftOut(model.control, record);
    });
}

void writeMarkedProject(SurveyModel &model, const std::string &path) {
    if (isProjectPath(path)) {
        static_cast<void>(STD_File_Write(model, path)); // a failure has been reported
    } else if (model.SoundingCount >= 1) {
        ReportNotice(NoticeLevel::Box,
                     {"WARNING: Skip flags have not been written, for this is no *.std file:",
                      fileNameOf(path), "Save keeps them in a project of another name."});
    }
}

} // namespace keldrin
