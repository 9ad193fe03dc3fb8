#pragma once

#include "toolkit/scripted/script_hands.h"

#include <QPointF>

#include <deque>
#include <functional>

namespace keldrin {

class DesktopBackend;

/// Hands that work the real widgets: they move the mouse, press keys and type, and what comes of it
/// reaches the program as it does when a user does the same.
class WidgetHands : public ScriptHands {
  public:
    explicit WidgetHands(DesktopBackend &desktop) : desktop_(desktop) {}

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
    bool answerChooser(const FileRequest &request, const std::optional<std::string> &path) override;
    bool answerBox(const BoxRequest &request, const BoxResult &answer) override;

  private:
    [[nodiscard]] QPointF placeOf(double xCm, double yCm) const;

    DesktopBackend &desktop_;
    std::deque<std::function<void()>> gesture_; ///< what is still to be done of it
};

} // namespace keldrin
