#include "conditioning/unread_fields.h"

#include "messages/message_log.h"

#include <algorithm>

namespace keldrin {

void reportUnreadFields(const std::vector<UnreadField> &fields) {
    constexpr std::size_t most = MessageLog::MostLines;
    const std::vector<std::string> words = unreadLines(fields);
    const std::vector<MessageLine> lines(words.begin(), words.end());
    for (std::size_t first = 0; first < lines.size(); first += most) {
        ReportError(std::span(lines).subspan(first, std::min(most, lines.size() - first)));
    }
}

} // namespace keldrin
