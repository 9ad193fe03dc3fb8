#include "screen/graphics_errors.h"

#include "messages/message_log.h"
#include "toolkit/toolkit.h"

#include <string>

namespace keldrin {

void CheckGraphicsError(std::string_view tag) {
    if (const int number = ToolkitErrorState(ErrorNumber); number != 0) {
        ReportGraphicsError(number, tag);
    }
}

void ReportGraphicsError(int number, std::string_view tag) {
    const std::string origin = tag.empty() ? "" : ": from " + std::string(tag);
    ReportError({"Graphics ERROR" + origin, ToolkitErrorText(number)});
    if (++messageLog().GraphicsErrorCount > MessageLog::MostGraphicsErrors) {
        ReportWarning({" Program run aborted, more than 20 graphics errors."});
        ReportNotice(NoticeLevel::Box, {"The program ends here: more than 20 graphics errors.",
                                        "What has not been saved is lost."});
        ShutDown();
    }
}

} // namespace keldrin
