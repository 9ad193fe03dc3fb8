// Any bytes as a scenario: every line is either read or reported, and what was read can be played
// against a small program without a fault.

#include "base/clock.h"
#include "page/drawing.h"
#include "shell/menu.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_spec.h"
#include "toolkit/scripted/scripted_backend.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace keldrin;

struct RunStopped {};

/// Takes the transcript and keeps nothing.
class Nowhere : public std::streambuf {
  protected:
    int overflow(int c) override { return c; }
    std::streamsize xsputn(const char * /*text*/, std::streamsize count) override { return count; }
};

// A scenario of the fuzzer may not touch files or start programs.
bool isHarmless(const ScriptLine &line) {
    const auto *standing = std::get_if<SetAuto>(&line.action);
    const bool engine =
        standing != nullptr && std::holds_alternative<EngineAnswer>(standing->answer);
    const auto *show = std::get_if<ShowState>(&line.action);
    const bool file = show != nullptr && (show->kind == ShowState::Kind::File ||
                                          show->kind == ShowState::Kind::Exists);
    return !engine && !file && !std::holds_alternative<CopyFile>(line.action) &&
           !std::holds_alternative<DeleteFile>(line.action) &&
           !std::holds_alternative<EngineAnswer>(line.action);
}

constexpr std::array Fields = {
    ControlSpec{.id = 1008, .kind = ControlKind::List, .label = "TEM Array", .length = 4},
    ControlSpec{.id = 1025, .kind = ControlKind::Real, .label = "Ramp", .limits = {0.1, 990000.0}},
    ControlSpec{.id = 1083, .kind = ControlKind::Real, .label = "Area", .unit = "m^2"},
    ControlSpec{.id = 1043, .kind = ControlKind::Text, .label = "Save As", .length = 255},
    ControlSpec{.id = ButtonContinue, .kind = ControlKind::Button, .label = "Continue"},
    ControlSpec{.id = ButtonCancel, .kind = ControlKind::Button, .label = "Cancel"},
};
constexpr DialogSpec Asked = {
    .number = 101, .caption = "Asked", .defaultButton = ButtonContinue, .controls = Fields};
constexpr DialogSpec Served = {
    .number = 108, .caption = "Served", .defaultButton = ButtonContinue, .controls = Fields};

void askInDialog(const DialogSpec &dialog, int mode) {
    WDialogLoad(dialog);
    ToolkitDialogOption(FieldChangeEvents, 1);
    WDialogPutMenu(1008, {"Fixed-Loop", "Moving-Loop"}, 1);
    WDialogPutReal(1025, 50.0F, "(F12.1)");
    WDialogPutReal(1083, 50.0F, "(1P,G14.4E1)");
    WDialogShow(-1, -1, ButtonContinue, mode);
    ToolkitEvent event;
    for (int i = 0; mode != DialogModal && event.type != EventButton && i < 50; ++i) {
        ToolkitNextEvent(event);
    }
    float value = 0.0F;
    std::string text;
    WDialogGetReal(1025, value);
    WDialogGetString(1043, text);
    WDialogUnload();
}

void serve(int command) {
    std::string path = "start";
    switch (command) {
    case Command::New:
        askInDialog(Asked, DialogModal);
        break;
    case Command::AutoSkip:
        askInDialog(Served, DialogModelessAlone);
        break;
    case Command::Open:
        ToolkitFileChooser("Choose|*.std|", ChooseExisting, path, "Open");
        break;
    case Command::Save:
        ToolkitFileChooser("Save|*.std|", ChooseForSave, path, "Save");
        WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, path, "ERROR");
        break;
    default:
        break;
    }
}

void playSmallProgram(Script script) {
    Nowhere nowhere;
    std::ostream out(&nowhere);
    ScriptedBackend backend(std::move(script), out);
    backend.stopRun = [](int) {
        throw RunStopped{};
    };
    try {
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 800);
        ToolkitEvent event;
        for (int i = 0; i < 200 && event.type != EventClose; ++i) {
            ToolkitNextEvent(event);
            if (event.type == EventMouseDown) {
                int end = 0;
                WGrInput(RubberRectangle, event.x, event.y, end);
            }
            serve(event.type == EventMenu ? event.value : 0);
        }
        ToolkitClose();
    } catch (const RunStopped &) {
        selectSurface(nullptr);
        toolkitState() = ToolkitState{};
    }
    fixClock(std::nullopt);
}

template <class Lines, class Number>
bool ascending(const Lines &lines, Number number) {
    return std::adjacent_find(lines.begin(), lines.end(), [&](const auto &a, const auto &b) {
               return number(a) >= number(b);
           }) == lines.end();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    offerMenu();
    Script script;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const std::vector<ScriptFault> faults = parseScript(text, script);
    if (!ascending(script.lines, [](const ScriptLine &line) { return line.number; }) ||
        !ascending(faults, [](const ScriptFault &fault) { return fault.line; })) {
        std::abort();
    }
    std::erase_if(script.lines, [](const ScriptLine &line) { return !isHarmless(line); });
    playSmallProgram(std::move(script));
    return 0;
}
