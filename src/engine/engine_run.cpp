#include "engine/engine_run.h"

#include "physics/ordered_work.h"

namespace keldrin {

bool forEachItem(int count, const EngineRun &run, const std::function<void(int)> &work) {
    struct Nothing {};
    bool complete = count == 0;
    OrderedWork<Nothing> items(
        count,
        [&](int item, Nothing &) {
            if (!run.stopped()) {
                work(item);
            }
        },
        [&](int item, const Nothing &) {
            if (run.stopped()) {
                return false;
            }
            complete = item + 1 == count;
            run.progress(item + 1, count);
            return true;
        });
    items.run(run.threads);
    return complete;
}

} // namespace keldrin
