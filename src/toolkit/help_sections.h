#pragma once

#include "base/program_help.h"

#include <array>

namespace keldrin {

// What is told in more than one place: the keys and the mouse, in the program's window of keys and
// in its manual page, and the exit codes that both programs share.

inline constexpr std::array MainWindowKeys = {
    HelpEntry{"Ctrl+N", "Make a project of field data."},
    HelpEntry{"Ctrl+O", "Open a project."},
    HelpEntry{"Ctrl+S", "Save the project."},
    HelpEntry{"Ctrl+Q", "Leave the program."},
    HelpEntry{"L", "Show the plan of the line."},
    HelpEntry{"F1", "Show the keys."},
    HelpEntry{"F2", "Show the log and all messages, from a dialog too."},
    HelpEntry{"Right click", "Choose a page of the line, or one of the files opened lately."},
    HelpEntry{"Drop a file", "Open a project, or make one of field data."},
};

inline constexpr std::array ReviewKeys = {
    HelpEntry{"N, Down, Right, wheel down", "Next sounding."},
    HelpEntry{"P, Up, Left, wheel up", "Previous sounding."},
    HelpEntry{"Left click or drag", "Set the skip flag of a window, or of all in a box."},
    HelpEntry{"Right click or drag", "Clear the skip flags."},
    HelpEntry{"Ctrl+Z", "Take the last change of flags back."},
    HelpEntry{"Ctrl+Y, Ctrl+Shift+Z", "Bring it again."},
    HelpEntry{"Ctrl+P", "Print the sounding."},
    HelpEntry{"L", "Show the plan of the line, and come back with its sounding."},
    HelpEntry{"X", "Leave the review and keep the changes."},
    HelpEntry{"Esc", "Leave the review without the changes."},
};

inline constexpr std::array LinePageKeys = {
    HelpEntry{"L", "Show the plan."},
    HelpEntry{"N, Down, Right, wheel down", "Mark the next sounding."},
    HelpEntry{"P, Up, Left, wheel up", "Mark the previous sounding."},
    HelpEntry{"Page Up, Page Down, Home, End",
              "Go ten soundings on or back, to the first, the last."},
    HelpEntry{"Enter", "Review the marked sounding."},
    HelpEntry{"Left click", "Review the sounding under the mouse."},
    HelpEntry{"Right click", "Choose one of these."},
    HelpEntry{"X, Esc", "Go back."},
};

inline constexpr std::array DialogKeys = {
    HelpEntry{"Enter", "The default button."},
    HelpEntry{"Esc", "Cancel."},
};

inline constexpr std::array KeySections = {
    HelpSection{"keys of the main window", MainWindowKeys},
    HelpSection{"keys of the review", ReviewKeys},
    HelpSection{"keys of the pages of the line", LinePageKeys},
    HelpSection{"keys of the dialogs", DialogKeys},
};

inline constexpr std::array ExitCodes = {
    HelpEntry{"0", "Done."},
    HelpEntry{"1", "A file failed, or a check of the scenario."},
    HelpEntry{"2", "Unusable arguments or scenario."},
    HelpEntry{"3", "The scenario is out of step."},
    HelpEntry{"4", "The scenario ended inside a request."},
    HelpEntry{"5", "No progress."},
};

inline constexpr HelpSection ExitCodeSection = {"exit codes", ExitCodes};

} // namespace keldrin
