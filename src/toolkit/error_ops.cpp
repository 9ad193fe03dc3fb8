#include "toolkit/toolkit.h"

#include "page/drawing.h"
#include "page/error_state.h"
#include "page/hardcopy.h"
#include "toolkit/toolkit_state.h"

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

struct ErrorText {
    int number;
    std::string_view text;
};

constexpr std::array ErrorTexts = {
    ErrorText{ErrorNoSuchDialog, "There is no dialog of this number."},
    ErrorText{ErrorNoDialogSelected, "No dialog is selected."},
    ErrorText{ErrorNoSuchControl, "The dialog has no such control."},
    ErrorText{ErrorWrongKind, "The control holds no value of this kind."},
    ErrorText{ErrorNoNumber, "The text of the field is no number."},
    ErrorText{ErrorNoSuchCommand, "The menu has no such command."},
    ErrorText{ErrorCannotRun, "The operating system could not run the command."},
    ErrorText{DrawingUnknownColour, "There is no colour of this name."},
    ErrorText{DrawingBadView, "The drawing area, its units or the text have no extent."},
    ErrorText{DrawingBadLimits, "The limits of the axis cannot be drawn."},
};

int takeErrorOrFault(FaultInjection &fault) {
    if (fault.reads == 0) {
        return takeErrorNumber();
    }
    --fault.reads;
    errorState() = {};
    return fault.number;
}

} // namespace

int ToolkitErrorState(int item) {
    switch (item) {
    case ErrorNumber:
        return takeErrorOrFault(toolkitState().fault);
    case ErrorOfSystem:
        return errorState().systemError;
    default:
        return 0;
    }
}

std::string ToolkitErrorText(int number) {
    const std::map<int, std::string> &injected = toolkitState().fault.texts;
    if (const auto found = injected.find(number); found != injected.end()) {
        return found->second;
    }
    if (number == ErrorOutputFile || number == ErrorNoSuchDevice) {
        return std::string(hardcopyErrorText(static_cast<HardcopyError>(number)));
    }
    const auto *known = std::find_if(ErrorTexts.begin(), ErrorTexts.end(),
                                     [=](const ErrorText &e) { return e.number == number; });
    return known == ErrorTexts.end() ? "Toolkit error " + std::to_string(number) + "."
                                     : std::string(known->text);
}

void ToolkitSetError(int number, int systemError) {
    setErrorState(number, systemError);
}

} // namespace keldrin
