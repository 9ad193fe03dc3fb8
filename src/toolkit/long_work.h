#pragma once

#include "toolkit/backend.h"
#include "toolkit/control_ids.h"
#include "toolkit/dialog_model.h"
#include "toolkit/dialog_spec.h"

#include <array>
#include <string_view>

namespace keldrin {

// Long work that the user watches and may stop: a dialog with words, a bar and a button, which the
// window system shows once the work has taken a while. Without a user nothing is shown, and
// nothing is ever stopped.

/// Long work for the length of this object. Meanwhile the menu is out of service, and a close
/// request waits for the next wait for an event. Work within other work moves that one's bar.
class LongWork {
  public:
    explicit LongWork(WorkRequest request);
    LongWork(const LongWork &) = delete;
    LongWork &operator=(const LongWork &) = delete;
    ~LongWork();

    /// Says how much is done; a total of 0 or below: the end is not known. Cheap enough for every
    /// item of a loop: the window system sees about 30 steps a second.
    /// returns  false once the user has stopped the work
    bool step(double done, double total);

    /// Replaces the words of the dialog.
    void say(std::string_view words);

    [[nodiscard]] bool stopped() const { return stopped_; }

  private:
    bool stopped_ = false;
};

/// Takes the shown work away while the program asks the user something, for the length of this
/// object.
class WorkPause {
  public:
    WorkPause();
    WorkPause(const WorkPause &) = delete;
    WorkPause &operator=(const WorkPause &) = delete;
    ~WorkPause();
};

/// The controls of a dialog of long work: words, a bar and the button that stops it.
constexpr std::array<ControlSpec, 3> workControls(std::string_view button) {
    return {ControlSpec{.id = WorkWords}, ControlSpec{.id = WorkBar, .kind = ControlKind::Bar},
            ControlSpec{.id = ButtonCancel, .kind = ControlKind::Button, .label = button}};
}

/// The dialog of work that names no other.
extern const DialogSpec ProgressDialog;

/// The dialog of some work with its words, for backends. Its button sets `endButton`.
DialogModel makeWorkDialog(const WorkRequest &request);

} // namespace keldrin
