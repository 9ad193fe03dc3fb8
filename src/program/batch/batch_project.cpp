#include "program/batch/batch_project.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "shell/open_project.h"

#include <cstdio>

namespace keldrin {

BatchProject::BatchProject() {
    messageLog() = MessageLog{};
    messageLog().observer = [this](MessageKind kind, std::span<const MessageLine> lines) {
        if (kind == MessageKind::Error) {
            std::string text;
            for (const MessageLine &line : lines) {
                text.append(text.empty() ? "" : "; ").append(line.view());
            }
            fail(text);
        }
    };
}

BatchProject::~BatchProject() {
    messageLog() = MessageLog{};
}

bool BatchProject::open(const std::string &file) {
    path = file;
    if (!pathExists(existingForm(file))) {
        fail("there is no such file");
        return false;
    }
    if (OpenProject(model, path) != 0) {
        fail("it cannot be read");
        return false;
    }
    return true;
}

void BatchProject::fail(const std::string &why) {
    if (reason_.empty()) {
        reason_ = why;
    }
}

void BatchProject::printLine(const std::string &file, const std::string &done) const {
    std::string text = file + ": " + done;
    if (failed()) {
        text.append(done.empty() ? "" : ", ").append("FAILED: ").append(reason_);
    }
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}

} // namespace keldrin
