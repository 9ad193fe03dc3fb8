#pragma once

#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <functional>
#include <string>
#include <vector>

namespace keldrin {

/// A toolkit without a user, except one who watches long work and may stop it. Keeps what it is
/// told; every step reaches it once noticeEveryStep() was called.
class WorkBackend : public AnsweringBackend {
  public:
    void serveMenu(bool on) override { menuServed = on; }
    void beginWork(const WorkRequest &request) override {
        shown = true;
        works.push_back(request);
    }
    bool workStep(double fraction) override {
        fractions.push_back(fraction);
        return !stops || !stops(static_cast<int>(fractions.size()));
    }
    void endWork() override { shown = false; }
    BoxResult messageBox(const BoxRequest &request) override {
        boxesDuringWork += shown ? 1 : 0;
        boxes.push_back(request.lines);
        return {};
    }

    static void noticeEveryStep() { toolkitState().stepPause = std::chrono::milliseconds(0); }
    void stopAtStep(int step) {
        stops = [step](int count) {
            return count == step;
        };
    }

    std::function<bool(int)> stops; ///< asked with the number of the step, from 1
    std::vector<WorkRequest> works;
    std::vector<double> fractions;
    std::vector<std::vector<std::string>> boxes;
    int boxesDuringWork = 0;
    bool shown = false;
    bool menuServed = true;
};

} // namespace keldrin
