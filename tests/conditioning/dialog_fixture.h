#pragma once

#include "support/message_recorder.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

/// Answers one dialog like a user: looks at what it shows, types, and presses a button.
class DialogTest : public testing::Test {
  protected:
    using Edits = std::vector<std::pair<int, std::string>>;

    DialogTest() { ToolkitInit(backend, {"keldrin"}); }
    ~DialogTest() override { ToolkitClose(); }

    /// What the next dialog gets: edits, then a button. `look` runs before the edits.
    void answer(Edits edits, int button = ButtonContinue, std::function<void()> look = {}) {
        backend.beforeAnswer = [edits = std::move(edits), button,
                                look = std::move(look)](AnsweringBackend &answers, int) {
            if (look) {
                look();
            }
            for (const auto &[id, text] : edits) {
                EXPECT_TRUE(answers.edit(id, text)) << id << " " << text;
            }
            answers.pressInstead(button);
        };
    }
    static const ControlState &control(int id) { return *findControl(*topDialog(), id); }
    static std::string shown(int id) { return shownValue(control(id)); }

    /// What was said about fields that keep their values. There is no box for it.
    std::vector<std::string> unreadTold() const {
        EXPECT_TRUE(messages.errors.empty());
        std::vector<std::string> told;
        std::copy_if(messages.infos.begin(), messages.infos.end(), std::back_inserter(told),
                     [](const std::string &line) {
                         return line.find(" stays.") != std::string::npos ||
                                line.find("keep their values") != std::string::npos;
                     });
        return told;
    }

    MessageRecorder messages;
    AnsweringBackend backend;
};

} // namespace keldrin
