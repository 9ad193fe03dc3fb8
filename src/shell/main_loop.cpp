#include "shell/main_loop.h"

#include "base/denormals.h"
#include "base/paths.h"
#include "base/version.h"
#include "conditioning/auto_skip.h"
#include "line/line_pages.h"
#include "line/view_loop.h"
#include "messages/message_log.h"
#include "page/drawing.h"
#include "review/review_loop.h"
#include "review/review_panel.h"
#include "review/review_save.h"
#include "screen/graphics_errors.h"
#include "screen/log_view.h"
#include "screen/screen_messages.h"
#include "shell/edit_configuration.h"
#include "shell/export_dialog.h"
#include "shell/invert.h"
#include "shell/menu.h"
#include "shell/new_model.h"
#include "shell/open_project.h"
#include "shell/questions_on_screen.h"
#include "shell/record_scenario.h"
#include "shell/save_project.h"
#include "shell/save_report.h"
#include "shell/start_file.h"
#include "shell/unsaved_marks.h"
#include "sounding/plan_view.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

/// What the loop keeps between commands, beside the model.
struct Shell {
    SurveyModel &model;
    std::string ProjectPath; ///< full path of the project, or what the last flow left there
    ReviewState review = {};
    ViewState view = {}; ///< its sounding is that of the review
};

void showProjectTitle(const Shell &shell) {
    showDataTitle(fileNameOf(shell.ProjectPath));
}

void leaveIfClosed(int status) {
    if (status >= StatusWindowClosed) {
        ShutDown();
    }
}

// What was chosen for the line before is not for another one.
void forgetLine(Shell &shell) {
    shell.review.undone = {};
    shell.view.settings = {};
}

void commandNew(Shell &shell) {
    shell.ProjectPath.clear();
    forgetLine(shell);
    if (BuildNewModel(shell.model, shell.ProjectPath) != 0) {
        reportAbortedBuild(); // a closed window ends only the dialog here, not the program
    }
    showProjectTitle(shell);
}

void commandOpen(Shell &shell) {
    if (!ToolkitFileChooser("Choose KELDRIN file|*.std|", ChooseExisting, shell.ProjectPath,
                            "Open KELDRIN file")) {
        return;
    }
    forgetLine(shell);
    const int status = OpenProject(shell.model, shell.ProjectPath);
    leaveIfClosed(status);
    showProjectTitle(shell);
    if (status == 0) {
        offerUnsavedMarks(shell.model, shell.ProjectPath);
    }
}

void commandInvert(Shell &shell) {
    leaveIfClosed(Invert(shell.model, shell.ProjectPath));
    showEngineStatus();      // it may have come or gone since the start
    showProjectTitle(shell); // reading offers another file when the project is gone
}

void commandSave(Shell &shell) {
    SaveProject(shell.model, shell.ProjectPath);
}

void commandEdit(Shell &shell) {
    leaveIfClosed(EditConfiguration(shell.model, shell.ProjectPath));
    showProjectTitle(shell);
}

// Cancel writes nothing; a model without soundings is written, as Save does.
void commandAutoSkip(Shell &shell) {
    const bool empty = shell.model.SoundingCount < 1;
    if (AutoSkip(shell.model, shell.review.autoSkip) == 0 || empty) {
        writeMarkedProject(shell.model, shell.ProjectPath);
    }
}

// A sounding that is chosen there, or the menu, leads back to the review.
AfterPages showPagesInReview(Shell &shell, char key, int &sounding) {
    ViewState view{linePageOfKey(key), sounding, shell.view.settings};
    const ViewEnd end = View_Loop(shell.model, view, shell.ProjectPath);
    sounding = view.sounding;
    shell.view.settings = view.settings;
    return end == ViewEnd::Closed       ? AfterPages::Closes
           : end == ViewEnd::MenuChosen ? AfterPages::Leaves
                                        : AfterPages::Stays;
}

void commandReview(Shell &shell) {
    ReportInfoLine("Plotting data and model curves.");
    const LinePages pages = {linePageKeys(), [&shell](char key, int &sounding) {
                                 return showPagesInReview(shell, key, sounding);
                             }};
    leaveIfClosed(Review_Loop(shell.model, shell.review, shell.ProjectPath, OpenProject, pages));
    showProjectTitle(shell); // Cancel Changes offers another file when the project is gone
}

template <int command>
void commandPage(Shell &shell) {
    shell.view.page = command;
    shell.view.isNew = true;
}

void commandExport(Shell &shell) {
    exportProject(shell.model, shell.ProjectPath);
}

void commandReport(Shell &shell) {
    saveReport(shell.model, shell.ProjectPath);
}

// The page stays until the user leaves it, whatever else is done meanwhile.
// returns  true when a command of the menu is the next event
bool serveLinePage(Shell &shell) {
    settleReview(shell.review, shell.model.SoundingCount);
    shell.view.sounding = shell.review.ReviewStation;
    const ViewEnd end = View_Loop(shell.model, shell.view, shell.ProjectPath);
    shell.review.ReviewStation = shell.view.sounding;
    if (end == ViewEnd::Closed) {
        ShutDown();
    }
    if (end == ViewEnd::ReviewAsked) {
        commandReview(shell);
    }
    return end == ViewEnd::MenuChosen;
}

void commandExit(Shell &) {
    ShutDown();
}

struct MenuCommand {
    int number;
    void (*run)(Shell &);
};

constexpr std::array Commands = {
    MenuCommand{Command::New, commandNew},
    MenuCommand{Command::Open, commandOpen},
    MenuCommand{Command::Save, commandSave},
    MenuCommand{Command::Edit, commandEdit},
    MenuCommand{Command::AutoSkip, commandAutoSkip},
    MenuCommand{Command::Invert, commandInvert},
    MenuCommand{Command::Review, commandReview},
    MenuCommand{Command::Exit, commandExit},
    MenuCommand{Command::Section, commandPage<Command::Section>},
    MenuCommand{Command::Profile, commandPage<Command::Profile>},
    MenuCommand{Command::Export, commandExport},
    MenuCommand{Command::Report, commandReport},
    MenuCommand{Command::Plan, commandPage<Command::Plan>},
};

void drawStartText() {
    const std::string version(ProgramVersionText);
    ToolkitClearPage();
    ToolkitPageKind("page");
    selectLogFont();
    IGrColour("BLACK");
    ToolkitCentredText(400.0F, std::string(ProgramIdentity) + ": 1D Smooth-Model TEM Inversion");
    ToolkitCentredText(700.0F, "Windows version implemented " + std::string(ProgramDate));
    ToolkitCentredText(1000.0F, "Torvu International");
    CheckGraphicsError();
}

void openRootWindow() {
    const RootSize size =
        rootWindowSize(ToolkitScreenInfo(ScreenWidth), ToolkitScreenInfo(ScreenHeight));
    WindowOpen(ResizableWindow, -1, -1, size.width, size.height);
    WindowTitle(std::string(ProgramIdentity) + " updated " + std::string(ProgramDate));
}

void settleMenuAndView(const Shell &shell) {
    const bool loaded = shell.model.SoundingCount >= 1;
    for (const MenuEntry &entry : MenuEntries) {
        if (entry.greyedAtStart) {
            WMenuSetState(entry.command, MenuEntryEnabled, loaded ? 1 : 0);
        }
    }
    ToolkitContextMenu(loaded ? viewEntries() : std::span<const ContextEntry>{});
    if (loaded && shell.view.page == 0) {
        Plot_PlanView(shell.model, shell.ProjectPath);
    }
}

// The log's letters keep their size, so another window holds other lines.
void layOutLog(const Shell &shell) {
    if (shell.model.SoundingCount < 1 && !messageLog().LogLineBuffer.empty()) {
        LogText_Update();
    }
}

void serveMenu(Shell &shell, int number) {
    const auto *command = std::find_if(Commands.begin(), Commands.end(),
                                       [number](const auto &c) { return c.number == number; });
    if (command != Commands.end()) {
        beginCommandOnScreen();
        command->run(shell);
        showWarningCount();
        recordHasBegun(); // within the command, whose state the lines of the record bring back
    }
}

// For a record that begins here: how a fresh start comes to the page and the sounding on show.
void recordRest(const Shell &shell) {
    std::vector<std::string> lines;
    if (shell.model.SoundingCount >= 1 && shell.review.ReviewStation > 1) {
        lines = {"menu Review Data",
                 "set " + std::to_string(ReviewControl::Station) + " " +
                     std::to_string(shell.review.ReviewStation),
                 "key x"};
    }
    if (const MenuEntry *page = findMenuEntry(shell.view.page)) {
        lines.push_back("menu " + withoutMnemonic(page->label));
    }
    recordRests(shell.model.SoundingCount >= 1 ? shell.ProjectPath : "", std::move(lines));
}

// What a record does not bring back is as at the start of the program.
void forgetSettings(Shell &shell) {
    ReviewState fresh;
    fresh.ReviewStation = shell.review.ReviewStation;
    fresh.ReviewCount = shell.review.ReviewCount;
    shell.review = std::move(fresh);
    shell.view.settings = {};
}

} // namespace

RootSize rootWindowSize(int screenWidth, int screenHeight) {
    const float height = std::floor(0.85F * static_cast<float>(screenHeight));
    const float width = std::floor(1.25F * height);
    const float heightLimit = std::floor(0.8F * static_cast<float>(screenWidth));
    return {std::min(screenWidth, static_cast<int>(width)),
            static_cast<int>(std::min(height, heightLimit))};
}

void runProgram(SurveyModel &model) {
    flushDenormals();
    showMessagesOnScreen();
    askQuestionsOnScreen();
    model = SurveyModel{};
    Shell shell{model, {}};
    openRootWindow();
    drawStartText();
    OpenLogFiles("keldrin ");
    offerRecord();
    showEngineStatus();
    leaveIfClosed(StartFile(model, shell.ProjectPath));
    showProjectTitle(shell);
    showWarningCount();
    for (;;) {
        settleMenuAndView(shell);
        recordRest(shell);
        if (shell.view.page != 0 && model.SoundingCount >= 1 && !serveLinePage(shell)) {
            continue;
        }
        ToolkitEvent event;
        ToolkitNextEvent(event);
        if (event.type == EventClose) {
            ShutDown();
        }
        if (recordHasBegun()) {
            forgetSettings(shell);
        }
        if (event.type == EventMenu) {
            serveMenu(shell, event.value);
        } else if (event.type == EventResize) {
            layOutLog(shell);
        }
    }
}

} // namespace keldrin
