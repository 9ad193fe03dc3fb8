#include "engine/invert_project.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "engine/file_pair.h"
#include "engine/line_setup.h"
#include "engine/project_cells.h"
#include "messages/message_log.h"
#include "messages/message_sink.h"
#include "physics/apparent_resistivity.h"
#include "projectfile/control_group.h"
#include "projectfile/file_content.h"
#include "projectfile/model_file.h"
#include "projectfile/project_file.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <new>

namespace keldrin {

namespace {

using Clock = std::chrono::steady_clock;

std::string decimals(double value, std::string_view descriptor) {
    return std::string(trimLeft(formatReal(descriptor, value)));
}

/// "1 sounding", "2 soundings".
std::string counted(int count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

/// Stops a reading of the shared readers with the run.
class ReadingWatch : public WatchedWork {
  public:
    explicit ReadingWatch(const EngineRun &run) : run_(run) {}
    bool step(double /*done*/, double /*total*/) override { return !run_.stopped(); }

  private:
    const EngineRun &run_;
};

/// Collects what the shared readers report, and stops them with the run.
class ReaderMessages {
  public:
    explicit ReaderMessages(const EngineRun &run)
        : before_(messageLog().observer), quiet_(messageLog().quiet),
          beginWork_(messageSink().beginWork) {
        messageLog().quiet = true; // no box
        messageSink().beginWork = [&run](const std::string &, const std::string &) {
            return std::make_unique<ReadingWatch>(run);
        };
        messageLog().observer = [this](MessageKind kind, std::span<const MessageLine> lines) {
            if (kind == MessageKind::Info) {
                return;
            }
            if (count_++ == 0) {
                for (const MessageLine &line : lines) {
                    first_.append(first_.empty() ? "" : "; ").append(line.view());
                }
            }
        };
    }
    ReaderMessages(const ReaderMessages &) = delete;
    ReaderMessages &operator=(const ReaderMessages &) = delete;
    ~ReaderMessages() {
        messageLog().observer = before_;
        messageLog().quiet = quiet_;
        messageSink().beginWork = beginWork_;
    }

    [[nodiscard]] int count() const { return count_; }
    /// The first one in a single line; what is not printable is replaced.
    [[nodiscard]] std::string first() const {
        std::string text = first_;
        std::replace_if(
            text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; },
            '?');
        return text;
    }

  private:
    std::function<void(MessageKind, std::span<const MessageLine>)> before_;
    bool quiet_;
    decltype(MessageSink::beginWork) beginWork_;
    int count_ = 0;
    std::string first_;
};

int modelCount(SurveyModel &model) {
    const std::span<SoundingRecord> soundings = model.soundings();
    return static_cast<int>(std::count_if(soundings.begin(), soundings.end(),
                                          [](const SoundingRecord &r) { return r.NumLayer > 0; }));
}

/// What differs from the files as they were; models never change without calculated data.
enum class Written { Nothing, Calculated, Models };

/// One run of the engine on one project.
class ProjectRun {
  public:
    ProjectRun(const std::string &path, const InvertOptions &options, const EngineRun &run,
               const std::function<void(std::string_view)> &fail)
        : path_(existingForm(path)), options_(options), run_(run), fail_(fail) {}

    InvertResult run();

  private:
    InvertResult failed(std::string_view why) {
        fail_(why);
        return InvertResult::Failed;
    }
    void say(const std::string &line) const { run_.say(line); }

    InvertResult read();
    InvertResult readModelFile();
    void dropCutBlock();
    [[nodiscard]] std::string whyKept(const FileContent &old, const FileContent &next) const;
    InvertResult invert();
    InvertResult computeApparentResistivities();
    InvertResult write();
    void reportSurvey() const;
    void reportChoice() const;
    void reportStart(const LineStart &start) const;
    void reportModels() const;
    void reportDepth() const;
    void reportEnd() const;

    std::string path_;
    InvertOptions options_;
    const EngineRun &run_;
    const std::function<void(std::string_view)> &fail_;
    Clock::time_point begin_ = Clock::now();

    SurveyModel model_;
    DataTableLines lines_;
    OldFile project_;
    OldFile modelFile_;
    int usedModels_ = 0; ///< of the model file, by soundings of the project
    int newLayers_ = 0;  ///< of a grid that this project gets without a model file
    std::vector<SoundingPlan> plans_;
    LineChoice choice_;
    LineInversion line_;
    LineStart start_;
    LineSummary summary_;
    Written wrote_ = Written::Nothing;
};

InvertResult ProjectRun::read() {
    if (!isProjectPath(path_)) {
        return failed(path_ + " is no project; its name must end in .std");
    }
    std::string reason;
    if (!project_.read(path_, reason)) {
        return failed(path_ + " cannot be read: " + reason);
    }
    LineReader reader(MostGroupLine);
    reader.openText(project_.content());
    reader.watch([this](std::uintmax_t, std::uintmax_t) { return !run_.stopped(); });
    const ReaderMessages messages(run_);
    const bool read = STD_File_Read_Text(model_, reader, path_, lines_) == 0;
    if (reader.stopped()) {
        return InvertResult::Stopped;
    }
    if (!read) {
        return failed(path_ + (messages.count() > 0 ? " cannot be read: " + messages.first()
                                                    : " holds no sounding"));
    }
    if (messages.count() > 0) {
        say(counted(messages.count(), "message") +
            " while reading the project, the first: " + messages.first());
    }
    newLayers_ = model_.ModelLayerCount;
    return readModelFile();
}

InvertResult ProjectRun::readModelFile() {
    const std::string path = modelPathOf(path_);
    std::string reason;
    if (!modelFile_.readIfPresent(path, reason)) {
        return failed(path + " cannot be read: " + reason);
    }
    if (!modelFile_.exists()) {
        return InvertResult::Done;
    }
    if (options_.fresh) { // how many models of the file are those of this project, no more
        const ReaderMessages unsaid(run_);
        SurveyModel looked = model_;
        usedModels_ = M1D_File_Read(looked, path) == 0 ? modelCount(looked) : 0;
        return InvertResult::Done;
    }
    const ReaderMessages messages(run_);
    const bool read = M1D_File_Read(model_, path) == 0;
    if (run_.stopped()) {
        return InvertResult::Stopped;
    }
    if (!read) {
        return failed(path + " cannot be read: " + messages.first());
    }
    usedModels_ = modelCount(model_);
    if (!model_.source.models.content.whole) {
        dropCutBlock();
    }
    if (messages.count() > 0) {
        say(counted(messages.count(), "message") +
            " while reading the model file, the first: " + messages.first());
    }
    return InvertResult::Done;
}

// The last block of a file that was cut may lack its deeper layers.
void ProjectRun::dropCutBlock() {
    SoundingRecord *last = nullptr;
    for (SoundingRecord &record : model_.soundings()) {
        last = record.NumLayer > 0 ? &record : last;
    }
    if (last != nullptr) {
        last->NumLayer = 0;
    }
}

void ProjectRun::reportSurvey() const {
    int windows = 0;
    for (const SoundingRecord &record : model_.soundings()) {
        windows += record.NumTW;
    }
    say(counted(model_.SoundingCount, "sounding") + ", " + counted(windows, "window") + ", " +
        std::string(trimRight(model_.control.SurveyType.view())));
    if (model_.control.NTxTurn > 1) {
        say("the loop has " + counted(model_.control.NTxTurn, "turn") +
            "; apparent resistivities are for one turn");
    }
}

void ProjectRun::reportChoice() const {
    if (choice_.ofOtherTransmitters > 0) {
        say(counted(choice_.ofOtherTransmitters, "sounding") + " of other transmitters " +
            (choice_.ofOtherTransmitters == 1 ? "stays as it is" : "stay as they are"));
    }
    if (choice_.refused > 0) {
        say(counted(choice_.refused, "sounding") + " cannot be computed and " +
            (choice_.refused == 1 ? "stays as it is; " : "stay as they are; ") +
            choice_.firstRefusal);
    }
}

void ProjectRun::reportStart(const LineStart &start) const {
    if (start.layers > 0) {
        say(counted(start.layers, "layer") + " to " + Number_Text(start.depth, "(F14.0)") + " m");
    }
    if (start.fromModelFile > 0) {
        say("layers, background and starting models of " +
            counted(start.fromModelFile, "sounding") + " are those of the model file");
    }
    if (start.outOfRange > 0) {
        say("ResInv of " + counted(start.outOfRange, "sounding") +
            " in the model file is outside of 0.01 to 100000 ohm-m; " +
            (line_.iterations > 0 ? "they start from the background" : "it is limited"));
    }
    if (start.withoutData > 0) {
        say(counted(start.withoutData, "sounding") + " without usable data");
    }
}

InvertResult ProjectRun::invert() {
    model_.control.Niteration = options_.forward ? 0 : model_.control.Niteration;
    reportSurvey();
    plans_ = planSurvey(model_, run_);
    if (run_.stopped()) {
        return InvertResult::Stopped;
    }
    choice_ = chooseSoundings(model_, plans_);
    reportChoice();
    if (!prepareLine(model_, plans_, choice_, newLayers_, run_, line_, start_)) {
        return InvertResult::Stopped;
    }
    reportStart(start_);
    switch (invertLine(line_, run_, summary_)) {
    case LineResult::Stopped:
        return InvertResult::Stopped;
    case LineResult::Failed:
        return failed("the equations of the line have no solution");
    case LineResult::Done:
        break;
    }
    reportModels();
    if (!storeCalculated(line_, choice_, run_, model_)) {
        return InvertResult::Stopped;
    }
    storeModels(line_, choice_, line_.iterations == 0, model_);
    return InvertResult::Done;
}

void ProjectRun::reportModels() const {
    if (summary_.converged && line_.iterations > 0) {
        say("converged after " + counted(summary_.iterations, "iteration"));
    }
    constexpr double noteworthy = 2.0;
    const auto larger =
        std::count_if(line_.soundings.begin(), line_.soundings.end(),
                      [](const LineSounding &sounding) { return sounding.scale > noteworthy; });
    if (larger > 0 && line_.iterations > 0) {
        say("errors of " + counted(static_cast<int>(larger), "sounding") +
            " were taken more than twice as large: no smooth model was found that fits within "
            "them" +
            (summary_.converged ? "" : "; the models still changed, more iterations may help"));
    }
    if (summary_.noisier > 0) {
        say("errors of " + counted(summary_.noisier, "sounding") +
            " were estimated, as all windows state the same; by the stated errors the misfit is " +
            decimals(summary_.statedMisfit, "(F20.2)"));
    }
    reportDepth();
}

void ProjectRun::reportDepth() const {
    constexpr double seen = 3.0;
    std::vector<double> depths;
    for (const LineSounding &sounding : line_.soundings) {
        double depth = 0.0;
        for (Eigen::Index k = 0; k < sounding.m.size() && sounding.sensitivity[k] >= seen; ++k) {
            depth += sounding.prior.thickness[asIndex(k)];
        }
        if (!sounding.data.windows.empty()) {
            depths.push_back(depth);
        }
    }
    if (!depths.empty()) {
        std::sort(depths.begin(), depths.end());
        say("the data see down to " + Number_Text(depths.front(), "(F14.0)") + " to " +
            Number_Text(depths.back(), "(F14.0)") + " m, median " +
            Number_Text(depths[depths.size() / 2], "(F14.0)") + " m");
    }
}

InvertResult ProjectRun::computeApparentResistivities() {
    const ReaderMessages messages(run_);
    (void)ARes_Survey(model_, {[this](int done, int total) {
                                   run_.progress(done, total);
                                   return !run_.stopped();
                               },
                               run_.threads});
    return run_.stopped() ? InvertResult::Stopped : InvertResult::Done;
}

// What would be lost with the old model file; blank: nothing that the new one does not replace.
std::string ProjectRun::whyKept(const FileContent &old, const FileContent &next) const {
    if (!modelFile_.exists()) {
        return "";
    }
    if (!old.whole) {
        return "was not whole";
    }
    if (old.soundings > next.soundings) {
        return "holds more soundings";
    }
    return old.soundings > usedModels_ ? "holds models of other soundings" : "";
}

InvertResult ProjectRun::write() {
    if (choice_.soundings.empty()) {
        return InvertResult::Done;
    }
    std::vector<char> changed(model_.soundings().size(), 0);
    for (const std::size_t i : choice_.soundings) {
        changed[i] = 1;
    }
    RewrittenProject project;
    {
        const ReaderMessages messages(run_);
        project = rewriteCells(project_.content(), lines_, model_, changed, path_, run_);
    }
    if (run_.stopped()) {
        return InvertResult::Stopped;
    }
    if (!project.fault.empty()) {
        return failed(path_ + ": " + project.fault);
    }
    for (const std::string &column : project.without) {
        say("the table has no place for the column " + column);
    }
    // Models that were not changed keep their file, byte for byte.
    const bool keepsModels = line_.iterations == 0 && modelFile_.exists() && !options_.fresh &&
                             start_.fromModelFile == static_cast<int>(choice_.soundings.size());
    std::string models = modelFile_.content();
    std::string kept; // name of a model file that the new one does not stand for
    std::string why;
    if (!keepsModels) {
        FileWrite file = prepareModels(model_, modelFile_.path());
        const FileContent old = modelContent(modelFile_.path());
        why = whyKept(old, file.content);
        if (!why.empty()) {
            kept = keptName(modelFile_.path(), old.rows, modelContent);
        }
        models = std::move(file.text);
    }
    const FileReplacement newModels{modelFile_, models, kept};
    const FileReplacement newProject{project_, project.text, ""};
    wrote_ = needsWriting(newModels)    ? Written::Models
             : needsWriting(newProject) ? Written::Calculated
                                        : Written::Nothing;
    std::string reason;
    switch (replacePair(newModels, newProject, run_, reason)) {
    case PairResult::Stopped:
        return InvertResult::Stopped;
    case PairResult::Failed:
        return failed("nothing was written to " + path_ + ": " + reason);
    case PairResult::Replaced:
        break;
    }
    if (!kept.empty()) {
        say("the old model file " + why + " and is kept as " + std::string(fileNameOf(kept)));
    }
    return InvertResult::Done;
}

InvertResult ProjectRun::run() {
    for (const auto step : {&ProjectRun::read, &ProjectRun::invert,
                            &ProjectRun::computeApparentResistivities, &ProjectRun::write}) {
        if (run_.stopped()) {
            return InvertResult::Stopped;
        }
        const InvertResult result = (this->*step)();
        if (result != InvertResult::Done) {
            return result;
        }
    }
    reportEnd();
    return InvertResult::Done;
}

void ProjectRun::reportEnd() const {
    const auto done = static_cast<int>(choice_.soundings.size());
    const std::string misfit =
        summary_.withData == 0 ? ", no data to fit, "
                               : ", median misfit " + decimals(summary_.medianMisfit, "(F20.2)") +
                                     (summary_.noisier > 0 ? " by estimated errors, " : ", ");
    say(counted(summary_.iterations, "iteration") + misfit + std::to_string(done) + " of " +
        counted(model_.SoundingCount, "sounding"));
    const std::chrono::duration<double> seconds = Clock::now() - begin_;
    const std::string place =
        counted(done, "sounding") + " written to " + std::string(fileNameOf(path_));
    const std::string what = wrote_ == Written::Models       ? "models of " + place
                             : wrote_ == Written::Calculated ? "calculated data of " + place
                                                             : "nothing to write; both files are "
                                                               "as they were";
    say(what + ", " + decimals(seconds.count(), "(F20.1)") + " s");
}

} // namespace

InvertResult invertProject(const std::string &path, const InvertOptions &options,
                           const EngineRun &run,
                           const std::function<void(std::string_view)> &fail) {
    try {
        return ProjectRun(path, options, run, fail).run();
    } catch (const std::bad_alloc &) {
        fail("out of memory");
        return InvertResult::Failed;
    }
}

} // namespace keldrin
