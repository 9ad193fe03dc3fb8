#pragma once

#include "base/clock.h"
#include "toolkit/user_record.h"

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

/// Takes down what the user does as a scenario (script.h). The lines since the program was last at
/// rest are always kept, so that a record which begins in the midst of a command, such as the
/// review, leads to the same state when it is played.
///
/// Each line is in the file before the program acts on it; a crash costs none. While a file is
/// written the program's clock stands still from one line to the next, and a "clock" line says so
/// wherever the moment was read. Places are rounded to 0.0001 cm, for the program too.
class Recorder : public UserRecord {
  public:
    ~Recorder() override { stop(); }

    /// Called when the file cannot be written any more, after which nothing is recorded.
    std::function<void(const std::string &path)> onFailure;

    /// The program waits for a command; `lines` lead there from its start with the project.
    void rests(std::vector<std::string> lines);

    /// Begins a file, which replaces one of this name.
    /// comments   its first lines, without "#"
    /// fromStart  the program has not opened its window yet
    /// returns    false when it cannot be written
    bool start(const std::string &path, const std::vector<std::string> &comments, bool fromStart);
    void stop();
    [[nodiscard]] bool isOn() const { return file_ != nullptr; }
    [[nodiscard]] const std::string &path() const { return path_; }
    [[nodiscard]] int count() const { return count_; } ///< lines since start()

    void event(RawEvent &event) override;
    void droppedPress(const RawEvent &event) override;
    void rubberBand(RubberEnd &end) override;
    void closed() override;
    void entered(const DialogModel &dialog, int id, std::string_view value, bool waiting) override;
    void pressed(const DialogModel &dialog, int id) override;
    void chose(const std::optional<std::string> &path) override;
    void answered(const BoxResult &answer) override;
    void printed(const PrinterPage *page) override;
    void ran(const RunResult &result) override;
    void askedForMessages() override;

  private:
    /// The press of a mouse button whose line may still become a drag or a double click.
    struct Press {
        int line = -1;     ///< count_ after its line
        int button = 0;    ///< without a key
        std::string words; ///< button and keys
        std::string place;
        bool down = false;
        bool twice = false;
    };

    void line(const std::string &text);
    void amend(const std::string &text); ///< the last line becomes a longer one
    void write(const std::string &text); ///< the last line of the file
    void beginFile(const std::vector<std::string> &comments, bool fromStart);
    void recordSize();
    void settleClock();
    void holdClock();
    void press(RawEvent &event);
    void release(double &pageX, double &pageY, bool aborted);
    void fieldServed(const RawEvent &event);
    void buttonServed(const RawEvent &event);
    [[nodiscard]] bool pressIsLast() const { return press_.line == count_; }

    struct CloseFile {
        void operator()(std::FILE *open) const { std::fclose(open); }
    };
    std::unique_ptr<std::FILE, CloseFile> file_;
    std::string path_;
    std::vector<std::string> lines_; ///< since the program was at rest
    std::string last_;               ///< line of the file, and where it begins
    long lastAt_ = 0;
    int count_ = 0;
    Press press_;
    std::map<std::pair<int, int>, std::string> waiting_; ///< by dialog and control
    bool sizeWaits_ = false; ///< the first event also writes the window's size
    bool closeTold_ = false; ///< with the line of the engine
    bool holdsClock_ = false;
    DateTime moment_;  ///< since the last line
    std::string told_; ///< moment of the last "clock" line
    int reads_ = 0;
};

} // namespace keldrin
