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

} // namespace

void showMessagesOnScreen() {
    messageSink() = {showLogLine, showBox, ToolkitNotice, beginWorkOnScreen, ToolkitClose};
    ToolkitMessagesSource([] { return messageLog().told; });
}

} // namespace keldrin
