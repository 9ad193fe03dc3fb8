#pragma once

#include "toolkit/backend.h"
#include "toolkit/dialog_model.h"
#include "toolkit/scripted/script.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace keldrin {

/// How a scenario's lines are carried out: what a user's hands do at the window, the dialogs and
/// the system's own dialogs. Events come of it, either given by next() or queued in the toolkit.
class ScriptHands {
  public:
    ScriptHands() = default;
    ScriptHands(const ScriptHands &) = delete;
    ScriptHands &operator=(const ScriptHands &) = delete;
    virtual ~ScriptHands() = default;

    // At the root window.
    virtual void chooseMenu(int command) = 0;
    virtual void pressKey(int code) = 0;
    virtual void chooseContext(const ContextEntry &entry) = 0;
    virtual void click(const MouseClick &click) = 0;
    virtual void drag(const MouseDrag &drag) = 0;
    virtual void turnWheel(const WheelTurn &wheel) = 0;
    virtual void resize(PixelSize size) = 0;
    virtual void expose() = 0;
    virtual void closeWindow() = 0;

    // In the dialog on top. The control is there and takes the value; the button is enabled.
    virtual void enter(DialogModel &dialog, int id, std::string_view value) = 0;
    virtual void press(DialogModel &dialog, int button) = 0;
    virtual void closeDialog(DialogModel &dialog) = 0;
    virtual void pressKeyIn(DialogModel &dialog, int code) = 0; ///< Enter or Esc

    /// The next event of a gesture that is not over, such as the button that comes up after a
    /// click; an event of no type when it was queued in the toolkit; nothing when none is left.
    virtual std::optional<RawEvent> next() = 0;
    virtual RubberEnd rubberBand(double pageX, double pageY) = 0;

    // In the system's dialogs. False when what the user would get there is another answer.
    virtual bool answerChooser(const FileRequest &request, const std::optional<std::string> &path);
    virtual bool answerBox(const BoxRequest &request, const BoxResult &answer);
};

/// Hands without a window: they go straight to the dialog's model and give the events themselves.
class DirectHands : public ScriptHands {
  public:
    void chooseMenu(int command) override;
    void pressKey(int code) override;
    void chooseContext(const ContextEntry &entry) override;
    void click(const MouseClick &click) override;
    void drag(const MouseDrag &drag) override;
    void turnWheel(const WheelTurn &wheel) override;
    void resize(PixelSize size) override;
    void expose() override;
    void closeWindow() override;
    void enter(DialogModel &dialog, int id, std::string_view value) override;
    void press(DialogModel &dialog, int button) override;
    void closeDialog(DialogModel &dialog) override;
    void pressKeyIn(DialogModel &dialog, int code) override;
    std::optional<RawEvent> next() override;
    RubberEnd rubberBand(double pageX, double pageY) override;

  private:
    /// An event on its way, and how a rubber band takes it.
    struct Pending {
        RawEvent event;
        int rubberEnd = EventMouseUp;
    };

    void push(int type, int value);
    void pushMouse(int type, int button, double x, double y, int rubberEnd = EventMouseUp);

    std::deque<Pending> pending_;
};

} // namespace keldrin
