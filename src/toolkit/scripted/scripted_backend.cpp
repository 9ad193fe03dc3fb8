#include "toolkit/scripted/scripted_backend.h"

#include "base/line_reader.h"
#include "base/paths.h"
#include "page/surfaces/null_surface.h"
#include "page/surfaces/page_transcript.h"
#include "toolkit/child_process.h"
#include "toolkit/dialog_model.h"
#include "toolkit/file_filter.h"
#include "toolkit/menu.h"
#include "toolkit/scripted/overloaded.h"
#include "toolkit/scripted/typed_entry.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace keldrin {

namespace {

constexpr int MostRequestsWithoutLine = 100000;

template <class Answer>
bool isAnswer(const ScriptLine &line) {
    return std::holds_alternative<Answer>(line.action);
}

// A request that is answered by lines of one kind.
template <class Answer>
Request requestFor(std::string title, std::string words) {
    return {std::move(title), std::move(words), isAnswer<Answer>, [](const SetAuto &standing) {
                return std::holds_alternative<Answer>(standing.answer);
            }};
}

template <class Answer>
const Answer &answerOf(const Turn &turn) {
    return turn.line != nullptr ? std::get<Answer>(turn.line->action)
                                : std::get<Answer>(turn.standing->answer);
}

// What a line does in a dialog, if it can be done there.
bool takesDialogLine(const ScriptLine &line, DialogModel &dialog) {
    if (const auto *entry = std::get_if<FieldEntry>(&line.action)) {
        return takesEntry(dialog, entry->id, entry->value);
    }
    if (const auto *press = std::get_if<ButtonPress>(&line.action)) {
        return findButton(dialog, press->button) != 0;
    }
    return std::holds_alternative<DialogClose>(line.action) &&
           isEnabledButton(dialog, closeButtonOf(dialog));
}

void enterDialogLine(const ScriptAction &action, DialogModel &dialog, ScriptHands &hands) {
    if (const auto *entry = std::get_if<FieldEntry>(&action)) {
        hands.enter(dialog, entry->id, entry->value);
    } else if (const auto *press = std::get_if<ButtonPress>(&action)) {
        hands.press(dialog, findButton(dialog, press->button));
    } else {
        hands.closeDialog(dialog);
    }
}

// Enter and Esc do in a dialog what its default button and its close box do; 0 for other keys.
int buttonOfKey(const ScriptLine &line, DialogModel &dialog) {
    const auto *key = std::get_if<KeyPress>(&line.action);
    if (key == nullptr || (key->code != KeyEnter && key->code != KeyEscape)) {
        return 0;
    }
    const int button = key->code == KeyEnter ? dialog.defaultButton : closeButtonOf(dialog);
    return isEnabledButton(dialog, button) ? button : 0;
}

// The dialog that a line is for: the one on top, or one that stands beside it.
DialogModel *dialogOf(const ScriptLine &line) {
    const std::vector<DialogModel *> &shown = toolkitState().shown;
    for (auto dialog = shown.rbegin(); dialog != shown.rend(); ++dialog) {
        if (takesDialogLine(line, **dialog)) {
            return *dialog;
        }
        if ((*dialog)->mode != DialogModeless) {
            break; // what is below it cannot be reached
        }
    }
    return nullptr;
}

std::string wordsOf(const DialogModel &dialog) {
    return "dialog " + std::to_string(dialog.number) + " " + inQuotes(dialog.caption);
}

// A standing answer to a dialog is a button that it has.
std::function<bool(const SetAuto &)> pressesButtonOf(DialogModel &dialog) {
    return [&dialog](const SetAuto &standing) {
        const auto *answer = std::get_if<ButtonAnswer>(&standing.answer);
        return answer != nullptr && isEnabledButton(dialog, answer->button);
    };
}

} // namespace

// ---- Requests

void ScriptedBackend::start() {
    place_.begin([this](const ScriptLine &line) { carryOut(line); });
}

int ScriptedBackend::stop() {
    transcript_.fact(usedUp_ ? "end script" : "end program");
    if (clockFixed_) {
        fixClock(std::nullopt);
    }
    return code_;
}

void ScriptedBackend::endRun(int code, std::string_view end) {
    transcript_.fact(end);
    code_ = std::max(code_, code);
    if (stopRun) {
        stopRun(code_);
    }
    std::fflush(stdout);
    std::_Exit(code_);
}

void ScriptedBackend::endOutOfStep(const ScriptLine &line, const Request &request) {
    transcript_.complain(line.number, inQuotes(line.text) + " does not answer " + request.words);
    endRun(ScriptOutOfStep, "end out-of-step");
}

void ScriptedBackend::showDrawing() {
    if (page_.changes() != drawn_) {
        drawn_ = page_.changes();
        transcript_.fact("draw " + pageSummary(page_));
    }
}

void ScriptedBackend::noteRequest() {
    showDrawing();
    if (++requestsWithoutLine_ > MostRequestsWithoutLine) {
        transcript_.complain(lineNumber_, "no progress, " +
                                              std::to_string(MostRequestsWithoutLine) +
                                              " requests were answered without a line");
        endRun(ScriptNoProgress, "end out-of-step");
    }
}

Turn ScriptedBackend::takeTurn(const Request &request) {
    const Turn turn = place_.take(request, [this](const ScriptLine &line) { carryOut(line); });
    if (turn.kind == Turn::Kind::OutOfStep) {
        endOutOfStep(*turn.line, request);
    }
    if (turn.kind == Turn::Kind::Line) {
        requestsWithoutLine_ = 0;
        lineNumber_ = turn.line->number;
        transcript_.startAnew();
        transcript_.echo(turn.line->number, turn.line->text);
    }
    usedUp_ = usedUp_ || turn.kind == Turn::Kind::UsedUp;
    return turn;
}

Turn ScriptedBackend::takeBlockingTurn(const Request &request) {
    const Turn turn = takeTurn(request);
    if (turn.kind == Turn::Kind::UsedUp) {
        endRun(ScriptEndedInRequest, "end script");
    }
    return turn;
}

// ---- Window and menu

void ScriptedBackend::openRoot(const RootSpec &spec) {
    HeadlessBackend::openRoot(spec);
    drawn_ = page_.changes();
    transcript_.fact("window " + std::to_string(root_.width) + " " + std::to_string(root_.height));
}

void ScriptedBackend::setTitle(std::string_view title) {
    if (title_ != title) {
        title_ = title;
        transcript_.fact("title " + title_);
    }
}

void ScriptedBackend::setMenu(int command, bool on) {
    const MenuEntry *entry = findMenuEntry(command);
    if (entry->below != 0) { // not on show
        return;
    }
    menuTold_[command] = on;
    transcript_.fact((on ? "menu on " : "menu off ") + withoutMnemonic(entry->label));
}

// One line for the whole bar. What lies under the mouse is left out: only a real mouse moves.
void ScriptedBackend::setStatus(StatusPart part, std::string_view text) {
    const auto before = status_;
    if (part == StatusPart::Pointer || text.empty()) {
        status_.erase(part);
    } else {
        status_[part] = text;
    }
    if (status_ == before) {
        return;
    }
    std::string bar = "status";
    for (const auto &[shown, words] : status_) {
        bar.append(shown == status_.begin()->first ? " " : " | ").append(words);
    }
    transcript_.fact(bar);
}

void ScriptedBackend::showMessages(const MessageRows &rows) {
    std::size_t count = 0;
    for (const MessageRow &row : rows) {
        count += row.lines.size();
    }
    transcript_.fact("messages " + std::to_string(count));
    for (const MessageRow &row : rows) {
        for (const std::string &line : row.lines) {
            transcript_.listed(line);
        }
    }
}

void ScriptedBackend::trace(std::string_view kind, std::string_view text) {
    const std::string fact = std::string(kind) + " " + std::string(text);
    if (kind == "info") {
        info_.push_back(fact);
    }
    transcript_.fact(fact);
}

// ---- Events

bool ScriptedBackend::takesEvent(const ScriptLine &line, DialogModel *top,
                                 const Request &request) const {
    if (dialogOf(line) != nullptr) {
        return true;
    }
    if (const auto *context = std::get_if<ContextChoice>(&line.action)) {
        return findContextEntry(context->label) != nullptr;
    }
    if (line.group != ScriptGroup::Event || std::holds_alternative<MenuChoice>(line.action)) {
        // With the menu bar out of service an entry has no effect; a standing answer comes first.
        return line.group == ScriptGroup::Event &&
               (top == nullptr || place_.findStanding(request) == nullptr);
    }
    const bool always = std::holds_alternative<WindowClose>(line.action) ||
                        std::holds_alternative<WindowExpose>(line.action) ||
                        std::holds_alternative<WindowResize>(line.action);
    const bool served = top == nullptr || top->mode != DialogModelessAlone || always ||
                        buttonOfKey(line, *top) != 0;
    return served || place_.findStanding(request) == nullptr;
}

Request ScriptedBackend::eventRequest(DialogModel *top) {
    Request request;
    request.title = top != nullptr ? top->caption : "";
    request.words = top != nullptr ? wordsOf(*top) : "event";
    request.takes = [](const SetAuto &) {
        return false;
    };
    if (top != nullptr) {
        request.takes = pressesButtonOf(*top);
    }
    return request;
}

RawEvent ScriptedBackend::wait() {
    if (const std::optional<RawEvent> event = hands_->next()) {
        return *event;
    }
    noteRequest();
    DialogModel *top = topDialog();
    Request request = eventRequest(top);
    const Request standing = request;
    request.fits = [&](const ScriptLine &line) {
        return takesEvent(line, top, standing);
    };
    while (toolkitState().queue.empty()) {
        const Turn turn = takeTurn(request);
        if (turn.kind == Turn::Kind::UsedUp) {
            code_ = top != nullptr ? std::max(code_, ScriptEndedInRequest) : code_;
            return {EventClose, 0, 0, 0.0, 0.0};
        }
        if (turn.standing != nullptr) {
            hands_->press(*top, std::get<ButtonAnswer>(turn.standing->answer).button);
        } else {
            enterEvent(*turn.line, top);
        }
        if (const std::optional<RawEvent> event = hands_->next()) {
            return *event;
        }
    }
    return {};
}

void ScriptedBackend::enterEvent(const ScriptLine &line, DialogModel *top) {
    std::visit(Overloaded{
                   [&](const MenuChoice &menu) { hands_->chooseMenu(menu.command); },
                   [&](const KeyPress &key) { enterKey(key.code, top); },
                   [&](const ContextChoice &context) {
                       hands_->chooseContext(*findContextEntry(context.label));
                   },
                   [&](const MouseClick &click) { hands_->click(click); },
                   [&](const MouseDrag &drag) { hands_->drag(drag); },
                   [&](const WheelTurn &wheel) { hands_->turnWheel(wheel); },
                   [&](const WindowResize &resize) { enterResize(resize); },
                   [&](const WindowExpose &) { hands_->expose(); },
                   [&](const WindowClose &) { hands_->closeWindow(); },
                   [&](const auto &) {
                       if (DialogModel *dialog = dialogOf(line)) {
                           enterDialogLine(line.action, *dialog, *hands_);
                       }
                   },
               },
               line.action);
}

void ScriptedBackend::enterKey(int code, DialogModel *top) {
    // A dialog that leaves the keys to the root window gets them as the loop's.
    const bool inDialog = top != nullptr && top->mode == DialogModelessAlone;
    if (inDialog && (code == KeyEnter || code == KeyEscape)) {
        hands_->pressKeyIn(*top, code);
    } else {
        hands_->pressKey(code);
    }
}

void ScriptedBackend::enterResize(const WindowResize &resize) {
    root_.width = resize.width;
    root_.height = resize.height;
    transcript_.fact("window " + std::to_string(root_.width) + " " + std::to_string(root_.height));
    hands_->resize({root_.width, root_.height});
}

RubberEnd ScriptedBackend::rubberBand(double pageX, double pageY) {
    return hands_->rubberBand(pageX, pageY);
}

// ---- Dialogs

void ScriptedBackend::showDialog(DialogModel &dialog, DialogPlacement /*placement*/) {
    if (dialog.mode == DialogModal) {
        showDrawing();
    }
    for (const std::string &line : dialogLines(dialog)) {
        transcript_.fact(line);
    }
}

int ScriptedBackend::runModal(DialogModel &dialog) {
    noteRequest();
    const Request request = {dialog.caption, wordsOf(dialog),
                             [&](const ScriptLine &line) {
                                 return takesDialogLine(line, dialog) ||
                                        buttonOfKey(line, dialog) != 0;
                             },
                             pressesButtonOf(dialog)};
    while (dialog.endButton == 0) {
        const Turn turn = takeBlockingTurn(request);
        if (turn.standing != nullptr) {
            hands_->press(dialog, std::get<ButtonAnswer>(turn.standing->answer).button);
        } else if (const auto *key = std::get_if<KeyPress>(&turn.line->action)) {
            hands_->pressKeyIn(dialog, key->code);
        } else {
            enterDialogLine(turn.line->action, dialog, *hands_);
        }
    }
    return dialog.endButton;
}

void ScriptedBackend::hideDialog(DialogModel &dialog) {
    transcript_.fact("dialog close " + std::to_string(dialog.number));
}

void ScriptedBackend::refresh(DialogModel &dialog, int id) {
    const ControlState *control = findControl(dialog, id);
    if (dialog.mode != 0 && control != nullptr) {
        transcript_.fact(fieldLine(*control));
    }
}

void ScriptedBackend::copyText(std::string_view text) {
    transcript_.fact("clipboard");
    LineReader reader(text.size() + 1);
    reader.openText(text);
    std::string_view line;
    while (reader.next(line) == LineStatus::Line) {
        transcript_.listed(line);
    }
}

// ---- Files, boxes, printer and engine

std::optional<std::string> ScriptedBackend::chooseFile(const FileRequest &request) {
    noteRequest();
    const std::string words = fileRequestText(request);
    transcript_.fact("ask " + words);
    const Turn turn = takeBlockingTurn(requestFor<FileAnswer>(request.title, words));
    std::optional<std::string> path = answerOf<FileAnswer>(turn).path;
    if (path && request.save) {
        path = withFilterExtension(*path, request.filter);
    }
    if (!hands_->answerChooser(request, path)) {
        failCheck("the file chooser gave another answer");
    }
    transcript_.fact("got file " + (path ? inQuotes(*path) : "cancel"));
    return path;
}

BoxResult ScriptedBackend::messageBox(const BoxRequest &request) {
    noteRequest();
    const std::string words = boxRequestText(request);
    transcript_.fact("ask " + words);
    const Turn turn = takeBlockingTurn(requestFor<BoxAnswer>(request.title, words));
    const BoxAnswer answer = answerOf<BoxAnswer>(turn);
    const BoxResult result = {answer.cancel ? 0 : 1, answer.quiet};
    if (!hands_->answerBox(request, result)) {
        failCheck("the message box gave another answer");
    }
    transcript_.fact(answer.cancel ? "got box cancel" : "got box ok");
    return result;
}

std::unique_ptr<Surface> ScriptedBackend::printer(PrinterPage &page) {
    noteRequest();
    transcript_.fact("ask printer");
    const Turn turn = takeBlockingTurn(requestFor<PrinterAnswer>("", "printer"));
    const PrinterAnswer answer = answerOf<PrinterAnswer>(turn);
    if (answer.declined) {
        transcript_.fact("got printer cancel");
        return nullptr;
    }
    transcript_.fact("got printer " + std::to_string(answer.width) + " " +
                     std::to_string(answer.height));
    page = {static_cast<double>(answer.width), static_cast<double>(answer.height)};
    return std::make_unique<NullSurface>();
}

RunResult ScriptedBackend::run(const std::vector<std::string> &command, const ChildWatch &watch) {
    noteRequest();
    const std::string words = runRequestText(command);
    transcript_.fact("ask " + words);
    const Turn turn = takeBlockingTurn(requestFor<EngineAnswer>(command.front(), words));
    const RunResult result = runEngine(answerOf<EngineAnswer>(turn), command, watch);
    if (result.toolkitError == 0) {
        transcript_.fact("got run exit " + std::to_string(result.exitCode));
    } else if (result.toolkitError == ErrorCannotRun) {
        transcript_.fact("got run fail " + std::to_string(result.systemError));
    } else {
        transcript_.fact("got run error " + std::to_string(result.toolkitError));
    }
    return result;
}

RunResult ScriptedBackend::runEngine(const EngineAnswer &answer,
                                     const std::vector<std::string> &command,
                                     const ChildWatch &watch) {
    RunResult result;
    switch (answer.kind) {
    case EngineAnswer::Kind::Run:
        result = runChild(command, programDirectory(ToolkitArgument(0)), watch);
        break;
    case EngineAnswer::Kind::Exit:
        result.exitCode = answer.code;
        break;
    case EngineAnswer::Kind::Files:
        copyOverProject(answer.base, command.size() > 1 ? command[1] : "");
        break;
    case EngineAnswer::Kind::Fail:
        result.toolkitError = ErrorCannotRun;
        result.systemError = answer.code;
        break;
    case EngineAnswer::Kind::Error:
        result.toolkitError = answer.code;
        break;
    }
    result.closeAsked = answer.close;
    return result;
}

} // namespace keldrin
