#pragma once

#include "toolkit/backend.h"
#include "toolkit/dialog_model.h"

#include <QElapsedTimer>

#include <memory>
#include <string_view>

namespace keldrin {

class DialogWindow;
class MainWindow;

/// Long work in progress: a dialog that appears when the work takes long enough to be noticed,
/// with a bar, words and a button that stops it.
class WorkWindow {
  public:
    WorkWindow(MainWindow &root, const WorkRequest &request);
    ~WorkWindow();
    WorkWindow(const WorkWindow &) = delete;
    WorkWindow &operator=(const WorkWindow &) = delete;

    /// Shows how far the work is, lets windows repaint and the button be pressed. Below 0 the end
    /// is not known. False once the button has been pressed.
    bool step(double fraction);

    /// Replaces the words; once the program is to end, they stay.
    void say(std::string_view text);

    /// Shows that the program ends as soon as the work has.
    void closeAsked();

  private:
    void show();

    MainWindow &root_;
    std::unique_ptr<DialogModel> model_;
    std::unique_ptr<DialogWindow> window_;
    QElapsedTimer sinceBegin_;
    bool shown_ = false;
    bool closing_ = false;
};

} // namespace keldrin
