#include "toolkit/toolkit_state.h"

#include <utility>

namespace keldrin {

ToolkitState &toolkitState() {
    static ToolkitState state;
    return state;
}

DialogModel *topDialog() {
    const ToolkitState &state = toolkitState();
    return state.shown.empty() ? nullptr : state.shown.back();
}

void injectFault(int number, std::string text, int reads) {
    FaultInjection &fault = toolkitState().fault;
    fault.number = number;
    fault.reads = reads;
    fault.texts[number] = std::move(text);
}

void queueEvent(const RawEvent &event) {
    toolkitState().queue.push_back(event);
}

} // namespace keldrin
