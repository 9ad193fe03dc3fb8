#include "toolkit/scripted/script_hands.h"

#include "page/surfaces/surface.h"
#include "toolkit/scripted/typed_entry.h"
#include "toolkit/user_edits.h"

namespace keldrin {

bool ScriptHands::answerChooser(const FileRequest & /*request*/,
                                const std::optional<std::string> & /*path*/) {
    return true;
}

bool ScriptHands::answerBox(const BoxRequest & /*request*/, const BoxResult & /*answer*/) {
    return true;
}

// ---- Root window

void DirectHands::push(int type, int value) {
    pending_.push_back({{type, value, 0, 0.0, 0.0}, EventMouseUp});
}

void DirectHands::pushMouse(int type, int button, double x, double y, int rubberEnd) {
    constexpr double width = static_cast<double>(PageWidthCm);
    constexpr double height = static_cast<double>(PageHeightCm);
    pending_.push_back({{type, button, 0, x / width, y / height}, rubberEnd});
}

void DirectHands::chooseMenu(int command) {
    push(EventMenu, command);
}

void DirectHands::pressKey(int code) {
    push(EventKey, code);
}

void DirectHands::chooseContext(const ContextEntry &entry) {
    push(EventKey, entry.key);
}

void DirectHands::click(const MouseClick &click) {
    for (int i = 0; i < (click.twice ? 2 : 1); ++i) {
        pushMouse(EventMouseDown, click.button, click.x, click.y);
        pending_.back().event.second = i > 0;
        pushMouse(EventMouseUp, plainButton(click.button), click.x, click.y);
    }
}

void DirectHands::drag(const MouseDrag &drag) {
    pushMouse(EventMouseDown, drag.button, drag.x1, drag.y1);
    pushMouse(EventMouseUp, plainButton(drag.button), drag.x2, drag.y2,
              drag.aborted ? EventKey : EventMouseUp);
}

void DirectHands::turnWheel(const WheelTurn &wheel) {
    constexpr double middle = 0.5;
    constexpr int wheelUp = 4;
    constexpr int wheelDown = 5;
    for (int i = 0; i < wheel.count; ++i) {
        pushMouse(EventMouseDown, wheel.up ? wheelUp : wheelDown,
                  middle * static_cast<double>(PageWidthCm),
                  middle * static_cast<double>(PageHeightCm));
    }
}

void DirectHands::resize(PixelSize /*size*/) {
    push(EventResize, 0);
}

void DirectHands::expose() {
    push(EventExposure, 0);
}

void DirectHands::closeWindow() {
    push(EventClose, 0);
}

// ---- Dialogs

void DirectHands::enter(DialogModel &dialog, int id, std::string_view value) {
    enterValue(dialog, id, value);
}

void DirectHands::press(DialogModel &dialog, int button) {
    userPresses(dialog, button);
}

void DirectHands::closeDialog(DialogModel &dialog) {
    userCloses(dialog);
}

void DirectHands::pressKeyIn(DialogModel &dialog, int code) {
    if (code == KeyEnter) {
        userPresses(dialog, dialog.defaultButton);
    } else {
        userCloses(dialog);
    }
}

// ---- Events on their way

std::optional<RawEvent> DirectHands::next() {
    if (pending_.empty()) {
        return std::nullopt;
    }
    const RawEvent event = pending_.front().event;
    pending_.pop_front();
    return event;
}

RubberEnd DirectHands::rubberBand(double pageX, double pageY) {
    if (pending_.empty() || pending_.front().event.type != EventMouseUp) {
        return {EventMouseUp, pageX, pageY};
    }
    const Pending end = pending_.front();
    pending_.pop_front();
    return {end.rubberEnd, end.event.pageX, end.event.pageY};
}

} // namespace keldrin
