#pragma once

#include <atomic>
#include <functional>
#include <string_view>

namespace keldrin {

/// How a run of the engine works and whom it keeps informed.
struct EngineRun {
    int threads = 1;
    const std::atomic<bool> *stop = nullptr; ///< set by a signal; looked at between soundings
    std::function<void(std::string_view)> say = [](std::string_view) {
    }; ///< a line of progress
    std::function<void(int done, int total)> progress = [](int, int) {
    }; ///< soundings of a long step

    [[nodiscard]] bool stopped() const {
        return stop != nullptr && stop->load(std::memory_order_relaxed);
    }
};

/// Does `work` for items 0 to count - 1 on the threads of the run, in any order. It must not throw
/// and may write only to what belongs to its item, so that results do not depend on the threads.
/// returns  false when the run was stopped before all were done
bool forEachItem(int count, const EngineRun &run, const std::function<void(int)> &work);

} // namespace keldrin
