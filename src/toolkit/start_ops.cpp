#include "base/index.h"
#include "toolkit/toolkit.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "page/drawing.h"
#include "page/error_state.h"
#include "page/hardcopy_state.h"
#include "toolkit/menu.h"
#include "toolkit/toolkit_state.h"

#include <cstdlib>
#include <utility>

namespace keldrin {

namespace {

std::unique_ptr<DocumentSurface> documentOfBackend(int driver) {
    Backend *backend = toolkitState().backend;
    return backend != nullptr ? backend->document(driver) : nullptr;
}

} // namespace

void ToolkitInit(Backend &backend, std::vector<std::string> arguments) {
    ToolkitState &state = toolkitState();
    state = ToolkitState{};
    state.backend = &backend;
    state.arguments = std::move(arguments);
    hardcopyState() = HardcopyState{};
    hardcopyHost() = {documentOfBackend, ToolkitTrace};
    errorState() = ErrorState{};
    backend.start();
}

int ToolkitClose() {
    ToolkitState &state = toolkitState();
    selectSurface(nullptr);
    hardcopyState() = HardcopyState{}; // an unfinished page must not outlive the backend
    hardcopyHost() = HardcopyHost{};
    errorState() = ErrorState{};
    Backend *backend = state.backend;
    const int code = backend != nullptr ? backend->stop() : 0;
    state = ToolkitState{};
    return code;
}

void WindowOpen(int flags, int x, int y, int width, int height) {
    ToolkitState &state = toolkitState();
    if (state.backend == nullptr) {
        return;
    }
    state.rootAsked = {flags, x, y, width, height};
    state.backend->openRoot(state.rootAsked);
    state.rootOpen = true;
    for (const MenuEntry &entry : windowContent().menu) {
        if (!menuEntryIsOn(entry.command)) {
            state.backend->setMenu(entry.command, false);
        }
    }
    selectSurface(&state.backend->screen());
}

void WindowTitle(std::string_view title) {
    if (Backend *backend = toolkitState().backend) {
        backend->setTitle(title);
    }
}

int ToolkitScreenInfo(int item) {
    Backend *backend = toolkitState().backend;
    const PixelSize size = backend != nullptr ? backend->screenSize() : PixelSize{};
    return item == ScreenWidth ? size.width : item == ScreenHeight ? size.height : 0;
}

int ToolkitWindowInfo(int item) {
    const ToolkitState &state = toolkitState();
    const PixelRect rect = state.rootOpen ? state.backend->rootRect() : PixelRect{};
    switch (item) {
    case WindowWidth:
        return rect.width;
    case WindowHeight:
        return rect.height;
    case WindowX:
        return rect.x;
    case WindowY:
        return rect.y;
    default:
        return 0;
    }
}

bool ToolkitHasSurface() {
    const ToolkitState &state = toolkitState();
    return state.rootOpen && !hardcopyState().isOpen() && state.backend->hasSurface();
}

void ToolkitStatus(StatusPart part, std::string_view text) {
    if (part == StatusPart::Notice) {
        toolkitState().notices = text;
        toolkitState().noticesSeen = false;
    }
    if (Backend *backend = toolkitState().backend) {
        backend->setStatus(part, text);
    }
}

void ToolkitNotice(std::string_view text) {
    const ToolkitState &state = toolkitState();
    std::string notices = state.noticesSeen ? std::string() : state.notices;
    if (holds(notices, text)) {
        return;
    }
    if (!notices.empty()) {
        notices.append(notices.back() == '.' ? " " : "; ");
    }
    ToolkitStatus(StatusPart::Notice, notices.append(text));
}

void ToolkitMessagesSource(MessageRows (*rows)()) {
    toolkitState().messages = rows;
}

void ToolkitRecord(UserRecord *record, void (*toggle)()) {
    toolkitState().record = record;
    toolkitState().toggleRecord = toggle;
}

void ToolkitShowMessages() {
    const ToolkitState &state = toolkitState();
    if (state.backend != nullptr && state.messages != nullptr) {
        if (state.record != nullptr) {
            state.record->askedForMessages();
        }
        state.backend->showMessages(state.messages());
    }
}

void ToolkitAddMessage(const MessageRow &row) {
    if (Backend *backend = toolkitState().backend) {
        backend->addMessage(row);
    }
}

void ToolkitRecentFile(const std::string &path) {
    if (Backend *backend = toolkitState().backend) {
        backend->addRecentFile(path);
    }
}

void ToolkitPointerText(std::function<std::string(float, float)> text) {
    Backend *backend = toolkitState().backend;
    if (backend == nullptr) {
        return;
    }
    if (!text) {
        backend->setPointerText({});
        backend->setStatus(StatusPart::Pointer, "");
        return;
    }
    backend->setPointerText([text = std::move(text)](double pageX, double pageY) {
        float x = 0.0F;
        float y = 0.0F;
        unitsFromFraction(pageX, pageY, x, y);
        return text(x, y);
    });
}

void ToolkitContextMenu(std::span<const ContextEntry> entries) {
    toolkitState().contextEntries = entries;
}

void WMenuSetState(int command, int /*item*/, int value) {
    ToolkitState &state = toolkitState();
    if (findMenuEntry(command) == nullptr) {
        ToolkitSetError(ErrorNoSuchCommand);
        return;
    }
    const bool on = value != 0;
    if (on != menuEntryIsOn(command)) {
        if (std::erase(state.menuTurned, command) == 0) {
            state.menuTurned.push_back(command);
        }
        if (state.backend != nullptr) {
            state.backend->setMenu(command, on);
        }
    }
}

void ToolkitFlush() {
    if (Backend *backend = toolkitState().backend) {
        backend->flush();
    }
}

void ToolkitTrace(std::string_view kind, std::string_view text) {
    if (Backend *backend = toolkitState().backend) {
        backend->trace(kind, text);
    }
}

std::string IOsVariable(std::string_view name) {
    const char *value = std::getenv(std::string(name).c_str());
    return value != nullptr ? value : "";
}

std::string IOsDirName() {
    return workingDirectory();
}

int ToolkitArgumentCount() {
    const std::size_t count = toolkitState().arguments.size();
    return count > 0 ? static_cast<int>(count) - 1 : 0;
}

std::string ToolkitArgument(int index) {
    const std::vector<std::string> &arguments = toolkitState().arguments;
    const bool there = index >= 0 && asIndex(index) < arguments.size();
    return there ? arguments[asIndex(index)] : "";
}

} // namespace keldrin
