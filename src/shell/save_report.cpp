#include "shell/save_report.h"

#include "base/paths.h"
#include "line/report.h"
#include "messages/message_log.h"
#include "sounding/hardcopy.h"
#include "toolkit/long_work.h"

#include <string>

namespace keldrin {

void saveReport(const SurveyModel &survey, std::string_view path) {
    const std::string file = reportPath(path);
    const std::string name(fileNameOf(file));
    ReportInfoLine("");
    ReportInfoLine("Saving report in file " + name);
    bool done = false;
    {
        LongWork work({"Writing " + name, "Saving the report"});
        done = drawReport(survey, path, file, [&work](std::size_t i, std::size_t n) {
            return work.step(static_cast<double>(i), static_cast<double>(n));
        });
    }
    if (!done) {
        ReportNotice(NoticeLevel::Status, {"Stopped; no file has been written."});
        return;
    }
    reportWhereHardcopyWent(file);
    checkHardcopy(file, "report");
}

} // namespace keldrin
