#include "shell/watched_survey.h"

#include "messages/message_log.h"
#include "physics/apparent_resistivity.h"
#include "toolkit/long_work.h"

#include <string>

namespace keldrin {

void surveyApparentResistivities(SurveyModel &model) {
    const std::string count = std::to_string(model.SoundingCount);
    LongWork work({"Line of " + count + " soundings", "Computing apparent resistivities"});
    int computed = 0;
    AResProgress progress;
    progress.step = [&](int done, int total) {
        computed = done;
        return work.step(done, total);
    };
    ARes_Survey(model, progress);
    if (work.stopped() && computed < model.SoundingCount) {
        ReportNotice(NoticeLevel::Status,
                     {"Apparent resistivities were stopped: " + std::to_string(computed) + " of " +
                      count + " soundings are done. Opening the project again computes the rest."});
    }
}

} // namespace keldrin
