#pragma once

#include "messages/message_log.h"

#include <string>
#include <vector>

namespace keldrin {

/// Collects every message for the length of a test, the lines of each joined by "|".
class MessageRecorder {
  public:
    MessageRecorder() {
        messageLog() = MessageLog{};
        messageLog().observer = [this](MessageKind kind, std::span<const MessageLine> lines) {
            std::string text;
            for (const MessageLine &line : lines) {
                text.append(text.empty() ? "" : "|").append(line.view());
            }
            (kind == MessageKind::Info      ? infos
             : kind == MessageKind::Warning ? warnings
                                            : errors)
                .push_back(text);
        };
    }
    MessageRecorder(const MessageRecorder &) = delete;
    MessageRecorder &operator=(const MessageRecorder &) = delete;
    ~MessageRecorder() { messageLog() = MessageLog{}; }

    std::vector<std::string> infos;
    std::vector<std::string> warnings;
    std::vector<std::string> errors;
};

} // namespace keldrin
