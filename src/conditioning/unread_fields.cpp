#include "conditioning/unread_fields.h"

#include "messages/message_log.h"

namespace keldrin {

void reportUnreadFields(const std::vector<UnreadField> &fields) {
    const std::vector<std::string> lines = unreadLines(fields);
    if (lines.size() == 1) {
        ReportNotice(NoticeLevel::Status, {lines.front()});
    } else if (!lines.empty()) { // the status bar shows the first line alone
        ReportNotice(NoticeLevel::Status,
                     {std::to_string(lines.size()) + " fields keep their values, see the log."});
        for (const std::string &line : lines) {
            ReportNotice(NoticeLevel::Log, {line});
        }
    }
}

} // namespace keldrin
