#include "toolkit/scripted/recorder.h"

#include "base/index.h"
#include "page/surfaces/surface.h"
#include "toolkit/menu.h"
#include "toolkit/scripted/script_keys.h"
#include "toolkit/scripted/script_words.h"
#include "toolkit/scripted/transcript.h"
#include "toolkit/scripted/typed_entry.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace keldrin {

namespace {

// A word of a scenario, in quotes where it would not stand for itself.
std::string wordOf(std::string_view text) {
    const bool plain = !text.empty() && text.find_first_of(" \t\"") == std::string_view::npos;
    return plain ? std::string(text) : inQuotes(text);
}

// The words to the end of a line, which are joined by one blank.
std::string restOf(std::string_view text) {
    const bool plain = !text.empty() && text.find_first_of("\t\"") == std::string_view::npos &&
                       text.find("  ") == std::string_view::npos && text.front() != ' ' &&
                       text.back() != ' ';
    return plain ? std::string(text) : inQuotes(text);
}

// A dialog of the toolkit's own, such as that of long work, has no place in a scenario.
DialogModel *loadedAs(const DialogModel &dialog) {
    DialogModel *found = findLoaded(dialog.number);
    return found == &dialog ? found : nullptr;
}

std::string valueWords(DialogModel &dialog, int id, std::string_view value) {
    const ControlState *control = findControl(dialog, id);
    if (control == nullptr || control->kind != ControlKind::List) {
        return restOf(value);
    }
    const int index = chosenEntry(dialog, id, value);
    const std::string &entry = control->entries[asIndex(index - 1)];
    const bool clear = !entry.empty() && chosenEntry(dialog, id, entry) == index;
    return clear ? restOf(entry) : std::string(value);
}

std::string pressLine(DialogModel &dialog, int id) {
    const ControlState *button = findControl(dialog, id);
    const std::string caption = button != nullptr ? withoutMnemonic(button->label) : "";
    const bool clear = !caption.empty() && findButton(dialog, caption) == id;
    return "press " + (clear ? restOf(caption) : std::to_string(id));
}

std::string buttonWords(int button) {
    constexpr std::array names = {"left", "middle", "right"};
    const std::string held = (button & KeyWithCtrl) != 0    ? "ctrl "
                             : (button & KeyWithShift) != 0 ? "shift "
                                                            : "";
    return held + names[asIndex(plainButton(button) - 1)];
}

// A fraction of the page in centimetres, and the fraction that these stand for.
std::string centimetres(double &fraction, double pageCm) {
    constexpr double perCm = 10000.0;
    const double cm = std::round(fraction * pageCm * perCm) / perCm;
    fraction = cm / pageCm;
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), cm).ptr;
    return {text.data(), end};
}

std::string placeWords(double &pageX, double &pageY) {
    const std::string x = centimetres(pageX, static_cast<double>(PageWidthCm));
    return x + " " + centimetres(pageY, static_cast<double>(PageHeightCm));
}

std::string momentText(const DateTime &moment) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d ", moment.year, moment.month,
                  moment.day);
    return text.data() + timeText(moment);
}

} // namespace

// ---- The file

void Recorder::rests(std::vector<std::string> lines) {
    lines_ = std::move(lines);
}

bool Recorder::start(const std::string &path, const std::vector<std::string> &comments,
                     bool fromStart) {
    stop();
    file_.reset(std::fopen(path.c_str(), "wb"));
    if (file_ == nullptr) {
        return false;
    }
    path_ = path;
    holdsClock_ = !clockIsFixed();
    beginFile(comments, fromStart);
    count_ = 0;
    press_ = {};
    return isOn();
}

void Recorder::beginFile(const std::vector<std::string> &comments, bool fromStart) {
    const PixelSize screen = toolkitState().backend->screenSize();
    holdClock();
    told_ = momentText(moment_);
    for (const std::string &comment : comments) {
        write("# " + comment);
    }
    write("screen " + std::to_string(screen.width) + " " + std::to_string(screen.height));
    write("clock " + told_);
    sizeWaits_ = fromStart;
    if (!fromStart) {
        recordSize();
    }
    for (const std::string &text : std::vector<std::string>(lines_)) {
        write(text);
    }
    reads_ = clockReads();
}

void Recorder::stop() {
    if (!isOn()) {
        return;
    }
    settleClock();
    file_.reset();
    if (holdsClock_) {
        fixClock(std::nullopt);
    }
    holdsClock_ = false;
}

// The window of a program that is played has the size that the program asks for.
void Recorder::recordSize() {
    const ToolkitState &state = toolkitState();
    const PixelRect now = state.rootOpen ? state.backend->rootRect() : PixelRect{};
    if (state.rootOpen &&
        (now.width != state.rootAsked.width || now.height != state.rootAsked.height)) {
        write("resize " + std::to_string(now.width) + " " + std::to_string(now.height));
    }
}

void Recorder::write(const std::string &text) {
    if (!isOn()) {
        return;
    }
    lastAt_ = std::ftell(file_.get());
    last_ = text;
    const bool good = lastAt_ >= 0 && std::fputs((text + "\n").c_str(), file_.get()) >= 0 &&
                      std::fflush(file_.get()) == 0;
    if (!good) {
        file_.reset();
        if (holdsClock_) {
            fixClock(std::nullopt);
        }
        holdsClock_ = false;
        if (onFailure) {
            onFailure(path_);
        }
    }
}

void Recorder::line(const std::string &text) {
    settleClock();
    lines_.push_back(text);
    ++count_;
    write(text);
    holdClock();
}

void Recorder::amend(const std::string &text) {
    if (!lines_.empty()) {
        lines_.back() = text;
    }
    if (isOn() && std::fseek(file_.get(), lastAt_, SEEK_SET) == 0) {
        write(text);
    }
}

// A moment that was read since the last line stands before that line.
void Recorder::settleClock() {
    if (!isOn() || clockReads() == reads_ || momentText(moment_) == told_) {
        return;
    }
    const std::string line = last_;
    if (std::fseek(file_.get(), lastAt_, SEEK_SET) == 0) {
        told_ = momentText(moment_);
        write("clock " + told_);
        write(line);
    }
}

void Recorder::holdClock() {
    if (!isOn()) {
        return;
    }
    if (holdsClock_) {
        fixClock(std::nullopt);
    }
    moment_ = clockNow();
    if (holdsClock_) {
        fixClock(moment_);
    }
    reads_ = clockReads();
}

// ---- At the root window

void Recorder::event(RawEvent &event) {
    if (sizeWaits_) {
        sizeWaits_ = false;
        recordSize();
    }
    const ToolkitState &state = toolkitState();
    switch (event.type) {
    case EventKey:
        if (const std::string name = keyNameOf(event.value); !name.empty()) {
            line("key " + wordOf(name));
        }
        break;
    case EventMenu:
        line("menu " + restOf(withoutMnemonic(findMenuEntry(event.value)->label)));
        break;
    case EventButton:
        buttonServed(event);
        break;
    case EventFieldChange:
        fieldServed(event);
        break;
    case EventMouseDown:
        press(event);
        break;
    case EventMouseUp:
        release(event.pageX, event.pageY, false);
        break;
    case EventExposure:
        line("expose");
        break;
    case EventResize:
        line("resize " + std::to_string(state.backend->rootRect().width) + " " +
             std::to_string(state.backend->rootRect().height));
        break;
    case EventClose:
        line("close");
        break;
    default:
        break;
    }
}

// The line is written with the press, before the program acts on it.
void Recorder::press(RawEvent &event) {
    const int button = plainButton(event.value);
    if (button == WheelUp || button == WheelDown) {
        line(button == WheelUp ? "wheel up" : "wheel down");
        return;
    }
    const std::string words = buttonWords(event.value);
    const std::string place = placeWords(event.pageX, event.pageY);
    const bool second = event.second && pressIsLast() && !press_.twice && press_.words == words &&
                        press_.place == place;
    if (second) {
        press_.twice = true;
        press_.down = true;
        amend("click " + words + " " + place + " double");
        return;
    }
    line("click " + words + " " + place);
    press_ = {count_, button, words, place, true, false};
}

void Recorder::droppedPress(const RawEvent &event) {
    if (pressIsLast() && !press_.twice && press_.button == plainButton(event.value)) {
        press_.twice = true;
        amend("click " + press_.words + " " + press_.place + " double");
    }
}

void Recorder::release(double &pageX, double &pageY, bool aborted) {
    const std::string place = placeWords(pageX, pageY);
    if (press_.down && pressIsLast() && !press_.twice && (aborted || place != press_.place)) {
        amend("drag " + press_.words + " " + press_.place + " " + place +
              (aborted ? " aborted" : ""));
        press_.line = -1; // no double click comes of it
    }
    press_.down = false;
}

void Recorder::rubberBand(RubberEnd &end) {
    release(end.pageX, end.pageY, end.event != EventMouseUp);
    if (end.event == EventClose) {
        line("close");
    }
}

void Recorder::closed() {
    if (!closeTold_) {
        line("close");
    }
    closeTold_ = false;
}

void Recorder::askedForMessages() {
    const DialogModel *top = topDialog();
    if (top == nullptr || top->mode != DialogModal) { // a blocking dialog takes no such line
        line("key F2");
    }
}

// ---- In dialogs

void Recorder::entered(const DialogModel &dialog, int id, std::string_view value, bool waiting) {
    DialogModel *loaded = loadedAs(dialog);
    if (loaded == nullptr) {
        return;
    }
    const std::string text = "set " + std::to_string(id) + " " + valueWords(*loaded, id, value);
    if (waiting) {
        waiting_[{dialog.number, id}] = text;
    } else {
        line(text);
    }
}

void Recorder::fieldServed(const RawEvent &event) {
    const auto found = waiting_.find({event.window, event.value});
    if (found != waiting_.end()) {
        line(found->second);
        waiting_.erase(found);
    }
}

void Recorder::pressed(const DialogModel &dialog, int id) {
    if (DialogModel *loaded = loadedAs(dialog)) {
        line(pressLine(*loaded, id));
    }
}

void Recorder::buttonServed(const RawEvent &event) {
    if (DialogModel *loaded = findLoaded(event.window)) {
        line(pressLine(*loaded, event.value));
    }
}

// ---- Answers

void Recorder::chose(const std::optional<std::string> &path) {
    line("file " + (path ? inQuotes(*path) : "cancel"));
}

void Recorder::answered(const BoxResult &answer) {
    line(answer.button == 0 ? "box cancel" : answer.quietFurther ? "box ok quiet" : "box ok");
}

void Recorder::printed(const PrinterPage *page) {
    line(page == nullptr ? "printer cancel"
                         : "printer " + std::to_string(std::lround(page->width)) + " " +
                               std::to_string(std::lround(page->height)));
}

void Recorder::ran(const RunResult &result) {
    line(result.closeAsked ? "engine run close" : "engine run");
    closeTold_ = result.closeAsked;
}

} // namespace keldrin
