#include "toolkit/toolkit.h"

#include "page/drawing.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <optional>

namespace keldrin {

namespace {

bool isMouse(int type) {
    return type == EventMouseDown || type == EventMouseUp;
}

// What the root window reports while it does not take it, or what the menu bar reports out of
// service, never reaches the logic.
bool isServed(const RawEvent &event) {
    if (event.type == EventNone || event.type == EventMouseMove) {
        return false;
    }
    const DialogModel *top = topDialog();
    if (event.type == EventMenu) {
        return top == nullptr && menuEntryIsOn(event.value);
    }
    const bool alone = top != nullptr && top->mode == DialogModelessAlone;
    return !(alone && event.window == 0 && (event.type == EventKey || isMouse(event.type)));
}

// A press that is the first of its own ends the waiting for the second one.
bool isDroppedPress(const RawEvent &event) {
    bool &drops = toolkitState().dropsSecondPress;
    const bool dropped = drops && event.type == EventMouseDown && event.second;
    drops = drops && event.type != EventMouseDown;
    return dropped;
}

// A trackbar, or the size of the window, is read when its event is served, so of several in a row
// only the last counts.
bool isRepeated(const RawEvent &event, const std::deque<RawEvent> &later) {
    const bool isRead = event.type == EventFieldChange || event.type == EventResize;
    if (!isRead || later.empty()) {
        return false;
    }
    const RawEvent &next = later.front();
    return next.type == event.type && next.value == event.value && next.window == event.window;
}

// A shortcut is the menu entry that it stands for, while the bar is in service.
RawEvent asChosen(const RawEvent &raw) {
    const MenuEntry *entry =
        raw.type == EventKey && topDialog() == nullptr ? findShortcut(raw.value) : nullptr;
    return entry != nullptr ? RawEvent{EventMenu, entry->command, 0, 0.0, 0.0} : raw;
}

void deliver(const RawEvent &raw, ToolkitEvent &event) {
    event = {raw.type, raw.value, raw.window, 0.0F, 0.0F, raw.second};
    if (isMouse(raw.type)) {
        unitsFromFraction(raw.pageX, raw.pageY, event.x, event.y);
    }
    if (raw.type == EventMenu) {
        toolkitState().boxesQuiet = false; // a new command
    }
}

// Keys that the toolkit serves itself, at any time.
bool servesKey(const RawEvent &raw) {
    const ToolkitState &state = toolkitState();
    const bool shows = raw.type == EventKey && raw.value == KeyF2;
    const bool records =
        raw.type == EventKey && raw.value == KeyRecord && state.toggleRecord != nullptr;
    const bool rolls = raw.type == EventKey && raw.value == KeyF3;
    if (shows) {
        ToolkitShowMessages();
    } else if (records) {
        state.toggleRecord();
    } else if (rolls && state.backend != nullptr) {
        state.backend->rollPanel();
    }
    return shows || records || rolls;
}

// Events discarded unread are not recorded, except the close request.
void takeDown(RawEvent &raw, bool drained) {
    UserRecord *record = toolkitState().record;
    if (record != nullptr && (!drained || raw.type == EventClose)) {
        record->event(raw);
    }
}

void takeDownDropped(const RawEvent &raw) {
    if (toolkitState().record != nullptr) {
        toolkitState().record->droppedPress(raw);
    }
}

bool takeQueued(ToolkitEvent &event, bool drained = false) {
    ToolkitState &state = toolkitState();
    if (!state.putBack.empty()) {
        event = state.putBack.front();
        state.putBack.pop_front();
        return true;
    }
    while (!state.queue.empty()) {
        RawEvent raw = asChosen(state.queue.front());
        state.queue.pop_front();
        if (servesKey(raw) || !isServed(raw)) {
            continue;
        }
        if (isDroppedPress(raw)) {
            takeDownDropped(raw);
        } else if (!isRepeated(raw, state.queue)) {
            takeDown(raw, drained);
            deliver(raw, event);
            return true;
        }
    }
    return false;
}

bool endsRubberBand(const RawEvent &event) {
    return isMouse(event.type) || event.type == EventKey || event.type == EventClose;
}

// A button may have come up, or a key gone down, before the band is asked for.
std::optional<RubberEnd> takeQueuedEnd(std::deque<RawEvent> &queue) {
    const auto found = std::find_if(queue.begin(), queue.end(), endsRubberBand);
    if (found == queue.end()) {
        return std::nullopt;
    }
    const RubberEnd end = {found->type, found->pageX, found->pageY};
    queue.erase(found);
    return end;
}

} // namespace

void ToolkitNextEvent(ToolkitEvent &event) {
    ToolkitState &state = toolkitState();
    event = {EventClose, 0, 0, 0.0F, 0.0F};
    while (!takeQueued(event)) {
        if (state.backend == nullptr || state.closeRemembered) {
            if (state.closeRemembered && state.record != nullptr) {
                state.record->closed();
            }
            state.closeRemembered = false;
            return;
        }
        state.noticesSeen = true;
        const RawEvent raw = state.backend->wait();
        if (raw.type != EventNone) {
            queueEvent(raw);
        }
    }
}

bool ToolkitPeekEvent(ToolkitEvent &event) {
    ToolkitState &state = toolkitState();
    RawEvent raw;
    while (!takeQueued(event, true)) {
        if (state.backend == nullptr || !state.backend->peek(raw)) {
            return false;
        }
        queueEvent(raw);
    }
    return true;
}

void ToolkitDropSecondPress() {
    toolkitState().dropsSecondPress = true;
}

void ToolkitPutBack(const ToolkitEvent &event) {
    toolkitState().putBack.push_front(event);
}

void ToolkitDialogOption(int option, int value) {
    if (option == FieldChangeEvents) {
        toolkitState().fieldChangeEvents = value != 0;
    }
}

void WGrInput(int /*mode*/, float &x, float &y, int &event) {
    ToolkitState &state = toolkitState();
    event = EventClose;
    if (state.backend == nullptr) {
        return;
    }
    double pageX = 0.0;
    double pageY = 0.0;
    fractionFromUnits(x, y, pageX, pageY);
    const std::optional<RubberEnd> queued = takeQueuedEnd(state.queue);
    RubberEnd end = queued ? *queued : state.backend->rubberBand(pageX, pageY);
    if (state.record != nullptr) {
        state.record->rubberBand(end);
    }
    unitsFromFraction(end.pageX, end.pageY, x, y);
    event = end.event;
    if (event == EventClose) {
        ToolkitPutBack({EventClose, 0, 0, 0.0F, 0.0F});
    }
}

} // namespace keldrin
