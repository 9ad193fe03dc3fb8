#include "screen/screen_messages.h"

#include "base/fixed_text.h"
#include "messages/message_log.h"
#include "messages/message_sink.h"
#include "screen/log_view.h"
#include "toolkit/long_work.h"
#include "toolkit/toolkit.h"

namespace keldrin {

namespace {

void showLogLine(std::string_view line) {
    ToolkitTrace("info", trimRight(line));
    LogText_Update();
}

bool showBox(std::span<const MessageLine> lines, bool mustBeSeen) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text.append(i == 0 ? "" : "\r").append(lines[i].view());
    }
    const BoxDuty duty = mustBeSeen ? BoxDuty::AlwaysShown : BoxDuty::MayBeQuieted;
    return WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, text, "ERROR", duty) != BoxCancel;
}

class WorkOnScreen : public WatchedWork {
  public:
    WorkOnScreen(const std::string &words, const std::string &caption) : work_({words, caption}) {}
    bool step(double done, double total) override { return work_.step(done, total); }

  private:
    LongWork work_;
};

std::unique_ptr<WatchedWork> beginWorkOnScreen(const std::string &words,
                                               const std::string &caption) {
    return std::make_unique<WorkOnScreen>(words, caption);
}

MessageRow rowOf(const ReportedMessage &message) {
    const RowKind kind = message.kind == MessageKind::Error     ? RowKind::Error
                         : message.kind == MessageKind::Warning ? RowKind::Warning
                         : message.kind == MessageKind::Notice  ? RowKind::Notice
                                                                : RowKind::Info;
    return {kind, message.file, message.row, message.lines};
}

void addToList(const ReportedMessage &message) {
    ToolkitAddMessage(rowOf(message));
}

MessageRows allRows() {
    MessageRows rows;
    for (const ReportedMessage &message : messageLog().reported) {
        rows.push_back(rowOf(message));
    }
    return rows;
}

} // namespace

void showMessagesOnScreen() {
    messageSink() = {showLogLine,   addToList,         showBox,
                     ToolkitNotice, beginWorkOnScreen, ToolkitClose};
    ToolkitMessagesSource(allRows);
}

void beginCommandOnScreen() {
    BeginCommandMessages();
    ToolkitStatus(StatusPart::Notice, "");
    ToolkitStatus(StatusPart::Warnings, "");
}

void showWarningCount() {
    const int count = warningsOfCommand();
    ToolkitStatus(StatusPart::Warnings,
                  count > 0 ? std::to_string(count) + (count == 1 ? " warning" : " warnings") : "");
}

} // namespace keldrin
