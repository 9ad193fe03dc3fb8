#include "toolkit/toolkit_state.h"

#include "base/ascii.h"
#include "toolkit/menu.h"

#include <algorithm>
#include <utility>

namespace keldrin {

ToolkitState &toolkitState() {
    static ToolkitState state;
    return state;
}

bool menuEntryIsOn(int command) {
    const std::vector<int> &turned = toolkitState().menuTurned;
    const bool isTurned = std::find(turned.begin(), turned.end(), command) != turned.end();
    const MenuEntry *entry = findMenuEntry(command);
    return entry == nullptr || entry->greyedAtStart == isTurned;
}

const ContextEntry RecordEntry = {"Record", "Ctrl+R", KeyRecord};

const ContextEntry *findContextEntry(std::string_view label) {
    if (toolkitState().toggleRecord != nullptr && sameIgnoringCase(label, RecordEntry.label)) {
        return &RecordEntry;
    }
    const std::span<const ContextEntry> entries = toolkitState().contextEntries;
    const auto found = std::find_if(entries.begin(), entries.end(), [=](const ContextEntry &e) {
        return sameIgnoringCase(e.label, label);
    });
    return found == entries.end() ? nullptr : &*found;
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
