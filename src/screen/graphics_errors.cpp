#include "screen/graphics_errors.h"

#include "messages/message_log.h"
#include "toolkit/toolkit.h"

#include <string>

namespace keldrin {

void CheckGraphicsError(std::string_view tag) {
    const int number = ToolkitErrorState(1);
    if (number == 0) {
        return;
    }
    const std::string origin = tag.empty() ? "" : ": from " + std::string(tag);
    ReportError({"Graphics ERROR" + origin, ToolkitErrorText(number)});
    if (++messageLog().GraphicsErrorCount > MessageLog::MostGraphicsErrors) {
        ReportWarning({" Program run aborted, more than 20 graphics errors."});
        ShutDown();
    }
}

} // namespace keldrin
