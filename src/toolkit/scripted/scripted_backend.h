#pragma once

#include "toolkit/scripted/exit_codes.h"
#include "toolkit/scripted/headless_backend.h"
#include "toolkit/scripted/script_hands.h"
#include "toolkit/scripted/script_turn.h"
#include "toolkit/scripted/transcript.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

/// The toolkit of scripted runs: answers every request of the program from a scenario and writes a
/// transcript of what a user would have seen.
class ScriptedBackend : public HeadlessBackend {
  public:
    ScriptedBackend(Script script, std::ostream &transcript)
        : ScriptedBackend(std::move(script), transcript, std::make_unique<DirectHands>()) {}
    /// hands  that carry out the lines
    ScriptedBackend(Script script, std::ostream &transcript, std::unique_ptr<ScriptHands> hands)
        : hands_(std::move(hands)), place_(std::move(script)), transcript_(transcript) {}

    /// Called with the exit code when the run has to stop inside a request, the transcript being
    /// complete. If it returns, or is not set, the process ends at once and writes nothing more.
    std::function<void(int)> stopRun;

    void start() override;
    int stop() override;
    void openRoot(const RootSpec &spec) override;
    void setTitle(std::string_view title) override;
    void setMenu(int command, bool on) override;
    RawEvent wait() override;
    void showDialog(DialogModel &dialog, DialogPlacement placement) override;
    int runModal(DialogModel &dialog) override;
    void hideDialog(DialogModel &dialog) override;
    void refresh(DialogModel &dialog, int id) override;
    void copyText(std::string_view text) override;
    std::optional<std::string> chooseFile(const FileRequest &request) override;
    BoxResult messageBox(const BoxRequest &request) override;
    RunResult run(const std::vector<std::string> &command, const ChildWatch &watch) override;
    RubberEnd rubberBand(double pageX, double pageY) override;
    std::unique_ptr<Surface> printer(PrinterPage &page) override;
    void setStatus(StatusPart part, std::string_view text) override;
    void showMessages(const MessageRows &rows) override;
    void trace(std::string_view kind, std::string_view text) override;

  protected:
    std::unique_ptr<ScriptHands> hands_;

  private:
    // Requests. The run ends here when a line does not fit, or, in a request that blocks, when no
    // line is left.
    void noteRequest();
    Turn takeTurn(const Request &request);
    Turn takeBlockingTurn(const Request &request);
    void showDrawing();
    [[noreturn]] void endRun(int code, std::string_view end);
    [[noreturn]] void endOutOfStep(const ScriptLine &line, const Request &request);

    // Lines of events and dialogs.
    Request eventRequest(DialogModel *top);
    bool takesEvent(const ScriptLine &line, DialogModel *top, const Request &request) const;
    void enterEvent(const ScriptLine &line, DialogModel *top);
    void enterKey(int code, DialogModel *top);
    void enterResize(const WindowResize &resize);

    // Set-up and check lines.
    void carryOut(const ScriptLine &line);
    void copyFile(const std::string &from, const std::string &to);
    void deleteFile(const std::string &path);
    void expectLine(const ExpectLine &expected);
    void showState(const ShowState &show);
    void showMenu();
    void showFile(const std::string &path);
    void failCheck(std::string_view reason);

    RunResult runEngine(const EngineAnswer &answer, const std::vector<std::string> &command,
                        const ChildWatch &watch);
    void copyOverProject(const std::string &base, const std::string &project);

    ScriptPlace place_;
    Transcript transcript_;
    std::map<int, bool> menuTold_;             ///< state of the entries that a line was printed for
    std::map<StatusPart, std::string> status_; ///< the status bar, blank parts left out
    std::vector<std::string> info_;            ///< lines of the message log
    std::uint64_t drawn_ = 0;                  ///< changes of the page that a line was printed for
    int lineNumber_ = 0;                       ///< of the line taken last
    int requestsWithoutLine_ = 0;
    int code_ = ScriptPassed;
    bool usedUp_ = false;
    bool clockFixed_ = false;
};

} // namespace keldrin
