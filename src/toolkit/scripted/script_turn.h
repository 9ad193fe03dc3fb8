#pragma once

#include "toolkit/scripted/script.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>

namespace keldrin {

/// Something that the program asks of its user.
struct Request {
    std::string title; ///< what a standing answer's title is compared with
    std::string words; ///< for the message that a line does not answer it
    /// True for a line that answers it.
    std::function<bool(const ScriptLine &)> fits;
    /// True for a standing answer of the right kind that can be given.
    std::function<bool(const SetAuto &)> takes;
};

/// What answers a request: a line, else a standing answer, else nothing, when no line is left.
struct Turn {
    enum class Kind { Line, Standing, UsedUp, OutOfStep };
    Kind kind = Kind::UsedUp;
    const ScriptLine *line = nullptr;
    const SetAuto *standing = nullptr;
};

/// The place in a scenario and its standing answers.
///
/// A request looks past set-up and check lines at the next line that does something. Where that one
/// fits, the lines before it are carried out and it is taken; so a check sees all that happened
/// before the line after it. Where it does not, a standing answer is used and no line is taken,
/// and only without one are set-up and check lines carried out one by one, for they may bring one.
class ScriptPlace {
  public:
    explicit ScriptPlace(Script script) : script_(std::move(script)) {}

    /// carryOut  does a set-up or check line
    Turn take(const Request &request, const std::function<void(const ScriptLine &)> &carryOut);

    /// Carries out the set-up lines that stand before the first line of another kind.
    void begin(const std::function<void(const ScriptLine &)> &carryOut);

    void addStanding(const SetAuto &standing) { standing_.push_front(standing); }
    void clearStanding() { standing_.clear(); }
    [[nodiscard]] const SetAuto *findStanding(const Request &request) const;

  private:
    [[nodiscard]] const ScriptLine *nextAction() const;
    [[nodiscard]] bool atAid() const; ///< at a set-up or check line

    Script script_;
    std::size_t next_ = 0;
    std::deque<SetAuto> standing_; ///< the newest first
};

} // namespace keldrin
