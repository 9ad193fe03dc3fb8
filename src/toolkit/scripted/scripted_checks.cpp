#include "toolkit/scripted/scripted_backend.h"

#include "base/line_reader.h"
#include "base/paths.h"
#include "page/surfaces/page_transcript.h"
#include "toolkit/menu.h"
#include "toolkit/scripted/overloaded.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace keldrin {

namespace {

std::error_code copyOver(const std::string &from, const std::string &to) {
    std::error_code error;
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
    return error;
}

} // namespace

void ScriptedBackend::carryOut(const ScriptLine &line) {
    requestsWithoutLine_ = 0;
    lineNumber_ = line.number;
    transcript_.echo(line.number, line.text);
    std::visit(Overloaded{
                   [&](const SetScreen &set) {
                       screen_ = {set.width, set.height};
                   },
                   [&](const SetClock &set) {
                       fixClock(set.moment);
                       clockFixed_ = true;
                   },
                   [&](const SetSurface &set) { surfaceOn_ = set.on; },
                   [&](const SetFault &set) { injectFault(set.number, set.text, set.reads); },
                   [&](const SetAuto &set) { place_.addStanding(set); },
                   [&](const ClearAuto &) { place_.clearStanding(); },
                   [&](const CopyFile &copy) { copyFile(copy.from, copy.to); },
                   [&](const DeleteFile &file) { deleteFile(file.path); },
                   [&](const ExpectLine &expected) { expectLine(expected); },
                   [&](const ShowState &show) { showState(show); },
                   [&](const NoteText &note) { transcript_.fact("note " + note.text); },
                   [](const auto &) {}, // events, entries and answers are taken by requests
               },
               line.action);
}

void ScriptedBackend::failCheck(std::string_view reason) {
    transcript_.complain(lineNumber_, reason);
    code_ = std::max(code_, ScriptCheckFailed);
}

void ScriptedBackend::copyFile(const std::string &from, const std::string &to) {
    if (const std::error_code error = copyOver(from, to)) {
        failCheck("cannot copy " + from + " to " + to + ": " + error.message());
    }
}

void ScriptedBackend::deleteFile(const std::string &path) {
    std::error_code error;
    std::filesystem::remove(path, error);
    if (error) {
        failCheck("cannot delete " + path + ": " + error.message());
    }
}

// Stands for what the engine leaves; a model file is copied when there is one.
void ScriptedBackend::copyOverProject(const std::string &base, const std::string &project) {
    copyFile(base + ".std", project);
    if (isRegularFile(base + ".m1d")) {
        copyFile(base + ".m1d", sideFilePath(project, ".m1d"));
    }
}

void ScriptedBackend::expectLine(const ExpectLine &expected) {
    if (transcript_.anyMatches(expected.pattern) == expected.reject) {
        failCheck((expected.reject ? "a line matches: " : "no line matches: ") + expected.pattern);
    }
}

void ScriptedBackend::showState(const ShowState &show) {
    switch (show.kind) {
    case ShowState::Kind::Title:
        transcript_.fact("title " + title_);
        break;
    case ShowState::Kind::Menu:
        showMenu();
        break;
    case ShowState::Kind::Dialog:
        if (const DialogModel *dialog = topDialog()) {
            for (const std::string &line : dialogLines(*dialog)) {
                transcript_.fact(line);
            }
        }
        break;
    case ShowState::Kind::Drawing:
        for (const std::string &line : pageTranscript(page_)) {
            transcript_.fact(line);
        }
        break;
    case ShowState::Kind::Log:
        for (const std::string &line : std::vector<std::string>(info_)) {
            transcript_.fact(line);
        }
        break;
    case ShowState::Kind::File:
        showFile(show.path);
        break;
    case ShowState::Kind::Exists:
        transcript_.fact("exists " + show.path + (pathExists(show.path) ? " yes" : " no"));
        break;
    }
}

// The entries whose state was reported before, in the order of the menu bar.
void ScriptedBackend::showMenu() {
    for (const MenuEntry &entry : windowContent().menu) {
        if (const auto told = menuTold_.find(entry.command); told != menuTold_.end()) {
            transcript_.fact((told->second ? "menu on " : "menu off ") +
                             withoutMnemonic(entry.label));
        }
    }
}

void ScriptedBackend::showFile(const std::string &path) {
    constexpr std::size_t longestLine = 65536;
    LineReader reader(longestLine);
    if (!reader.open(path)) {
        failCheck("cannot read " + path + ": " + reader.errorText());
        return;
    }
    std::string_view line;
    while (reader.next(line) == LineStatus::Line) {
        transcript_.listed(line);
    }
}

} // namespace keldrin
