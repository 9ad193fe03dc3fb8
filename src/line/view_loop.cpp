#include "line/view_loop.h"

#include "base/real.h"
#include "line/line_pages.h"
#include "line/sounding_text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace keldrin {

namespace {

/// One entry of the loop.
struct View {
    const SurveyModel &survey;
    ViewState &state;
    const std::string &path;
    LinePage page = {};
    bool shown = false; ///< the page as it is
    std::optional<ViewEnd> end = {};
};

void makePage(View &view) {
    view.shown = false;
    view.page = findLinePage(view.state.page)->make(view.survey, view.state.settings, view.path);
}

// ---- Actions of keys, menu and mouse

void goTo(View &view, int sounding) {
    view.shown = false;
    view.state.sounding = limited(sounding, 1, view.survey.SoundingCount);
}

template <int step>
void goBy(View &view) {
    goTo(view, view.state.sounding + step);
}

void goToFirst(View &view) {
    goTo(view, 1);
}

void goToLast(View &view) {
    goTo(view, view.survey.SoundingCount);
}

void askForReview(View &view) {
    view.end = ViewEnd::ReviewAsked;
}

void leave(View &view) {
    view.state.page = 0;
    view.end = ViewEnd::Left;
}

void showPage(View &view, int command) {
    view.state.page = command;
    makePage(view);
}

// What the dialog says stands in place of the hint.
void editLimits(View &view) {
    const LinePageKind &kind = *findLinePage(view.state.page);
    view.shown = false; // the log may stand in its place
    if (kind.editLimits(view.survey, view.state.settings)) {
        makePage(view);
    }
}

constexpr int LongStep = 10; ///< soundings

struct Binding {
    int key = 0; ///< a letter counts in both cases
    void (*act)(View &);
    std::string_view label = {}; ///< in the context menu; blank: not there
    std::string_view keyName = {};
};

constexpr std::array Bindings = {
    Binding{KeyEnter, askForReview, "Review this sounding", "Enter"},
    Binding{'N', goBy<1>, "Next sounding", "N"},
    Binding{KeyDown, goBy<1>},
    Binding{KeyRight, goBy<1>},
    Binding{'P', goBy<-1>, "Previous sounding", "P"},
    Binding{KeyUp, goBy<-1>},
    Binding{KeyLeft, goBy<-1>},
    Binding{KeyPageDown, goBy<LongStep>},
    Binding{KeyPageUp, goBy<-LongStep>},
    Binding{KeyHome, goToFirst},
    Binding{KeyEnd, goToLast},
    Binding{'E', editLimits, "Edit limits...", "E"},
    Binding{KeyEscape, leave, "Back", "Esc"},
    Binding{'X', leave},
};

void serveKey(View &view, int key) {
    if (const int command = linePageOfKey(key); command != 0) {
        showPage(view, command);
        return;
    }
    const auto *binding = std::find_if(Bindings.begin(), Bindings.end(),
                                       [=](const Binding &b) { return b.key == key; });
    if (binding != Bindings.end()) {
        binding->act(view);
    }
}

void serveMouse(View &view, const ToolkitEvent &event) {
    if (event.value == WheelUp || event.value == WheelDown) {
        goTo(view, view.state.sounding + (event.value == WheelDown ? 1 : -1));
        return;
    }
    const int sounding = event.value == MouseLeft ? view.page.soundingAt(event.x, event.y) : 0;
    if (sounding > 0) {
        goTo(view, sounding);
        ToolkitDropSecondPress(); // it would set a mark in the review
        askForReview(view);
    }
}

// Every other command is the main loop's.
void serveMenu(View &view, const ToolkitEvent &event) {
    if (findLinePage(event.value) != nullptr) {
        showPage(view, event.value);
    } else {
        ToolkitPutBack(event);
        view.end = ViewEnd::MenuChosen;
    }
}

void serveEvent(View &view, const ToolkitEvent &event) {
    switch (event.type) {
    case EventKey:
        serveKey(view, capitalKey(event.value));
        break;
    case EventMouseDown:
        serveMouse(view, event);
        break;
    case EventMenu:
        serveMenu(view, event);
        break;
    case EventResize:
        makePage(view); // for the new shape of the window
        break;
    case EventExposure:
        view.shown = false;
        break;
    case EventClose:
        view.end = ViewEnd::Closed;
        break;
    default:
        break;
    }
}

// ---- The loop

std::vector<ContextEntry> pageEntries() {
    std::vector<ContextEntry> entries;
    for (const Binding &binding : Bindings) {
        if (!binding.label.empty()) {
            entries.push_back({binding.label, binding.keyName, binding.key});
        }
    }
    const std::span<const ContextEntry> pages = viewEntries();
    entries.insert(entries.end() - 1, pages.begin(), pages.end()); // the way back is the last
    return entries;
}

void showPlace(const View &view) {
    ToolkitStatus(StatusPart::Sounding, soundingText(view.survey, view.state.sounding));
}

void serveView(View &view) {
    while (!view.end) {
        if (!view.shown) {
            view.page.draw(view.state.sounding);
            showPlace(view);
            view.shown = true;
        }
        ToolkitEvent event;
        ToolkitNextEvent(event);
        serveEvent(view, event);
    }
}

} // namespace

std::span<const ContextEntry> viewEntries() {
    static const std::vector<ContextEntry> entries = [] {
        std::vector<ContextEntry> made;
        for (const LinePageKind &kind : linePageKinds()) {
            made.push_back({kind.name, {&kind.key, 1}, kind.key});
        }
        made.push_back({"Export...", "Ctrl+E", KeyWithCtrl | 'E'});
        return made;
    }();
    return entries;
}

ViewEnd View_Loop(const SurveyModel &survey, ViewState &state, const std::string &path) {
    View view{survey, state, path};
    goTo(view, state.sounding);
    makePage(view);
    if (state.isNew) {
        ToolkitStatus(StatusPart::Notice, "A click or Enter reviews a sounding, Esc goes back.");
    }
    const std::vector<ContextEntry> entries = pageEntries();
    ToolkitContextMenu(entries);
    ToolkitPointerText([&view](float x, float y) { return view.page.pointerText(x, y); });
    serveView(view);
    ToolkitPointerText({});
    ToolkitContextMenu({});
    ToolkitStatus(StatusPart::Sounding, "");
    if (state.isNew) {
        ToolkitStatus(StatusPart::Notice, "");
    }
    state.isNew = false;
    return *view.end;
}

} // namespace keldrin
