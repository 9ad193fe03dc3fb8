#include "messages/message_log.h"

#include "base/paths.h"
#include "base/safe_writer.h"
#include "base/version.h"
#include "messages/message_sink.h"
#include "messages/reading_place.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace keldrin {

namespace {

const std::string Heading = "keldrin v" + std::string(ProgramVersionText);

bool isWritable(const std::string &directory) {
#ifdef _WIN32
    return true;
#else
    return ::access(directory.c_str(), W_OK) == 0;
#endif
}

std::string environmentVariable(const char *name) {
    const char *value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string stateDirectory() {
    std::string root = environmentVariable("XDG_STATE_HOME");
    if (root.empty()) {
        root = joinPath(environmentVariable("HOME"), ".local/state");
    }
    return joinPath(root, "keldrin");
}

// Where log files without a directory of their own go.
std::string logDirectory(MessageLog &log) {
    std::string working = workingDirectory();
    if (isWritable(working)) {
        return working;
    }
    std::string state = stateDirectory();
    std::error_code error;
    std::filesystem::create_directories(state, error);
    if (error) {
        return working;
    }
    log.movedNotice = "The working directory is not writable; the log files are in " + state;
    return state;
}

int deleteIfPresent(const std::string &path) {
    std::error_code error;
    std::filesystem::remove(path, error);
    return error ? 1 : 0;
}

void observe(MessageKind kind, std::span<const MessageLine> lines) {
    if (messageLog().observer) {
        messageLog().observer(kind, lines);
    }
}

// For the list that the user may ask for; of a very long run the oldest lines are dropped.
void keepForList(MessageKind kind, std::span<const MessageLine> lines) {
    MessageLog &log = messageLog();
    if (log.reported.size() >= MessageLog::MostReported) {
        log.reported.erase(log.reported.begin(),
                           log.reported.begin() + MessageLog::MostReported / 2);
    }
    ReportedMessage message;
    message.kind = kind;
    if (!log.readings.empty()) {
        message.file = log.readings.back()->file();
        message.row = log.readings.back()->row();
    }
    for (const MessageLine &line : lines) {
        message.lines.push_back(line.str());
    }
    log.reported.push_back(message);
    if (messageSink().reported) {
        messageSink().reported(message);
    }
}

std::span<const MessageLine> atMostFive(std::span<const MessageLine> lines) {
    return lines.first(std::min<std::size_t>(lines.size(), MessageLog::MostLines));
}

// An empty line, then the lines, each after one blank. Failures have nowhere to be reported.
void appendToErrorFile(std::span<const MessageLine> lines, bool withHeading) {
    const MessageLog &log = messageLog();
    if (log.errorPath.empty()) {
        return;
    }
    std::string text;
    if (withHeading && !pathExists(log.errorPath)) {
        text.append(" ").append(Heading).append(LineEnd);
    }
    text.append(LineEnd);
    for (const MessageLine &line : lines) {
        text.append(" ").append(line.view()).append(LineEnd);
    }
    static_cast<void>(appendToFile(log.errorPath, text)); // nowhere to say so
}

void openLog(MessageLog &log) {
    log.file.reset(std::fopen(log.logPath.c_str(), "wb"));
    if (!log.file) {
        return;
    }
    std::string text = Heading + " updated " + std::string(ProgramDate);
    text.append(LineEnd);
    if (!log.movedNotice.empty()) {
        text.append(log.movedNotice).append(LineEnd);
    }
    std::fwrite(text.data(), 1, text.size(), log.file.get());
}

void appendToLog(std::string_view text) {
    MessageLog &log = messageLog();
    if (log.logPath.empty()) {
        return;
    }
    if (!log.file) {
        openLog(log);
    }
    if (log.file) {
        std::string line(trimRight(text));
        line.append(LineEnd);
        std::fwrite(line.data(), 1, line.size(), log.file.get());
        std::fflush(log.file.get());
    }
}

void countError(std::span<const MessageLine> lines) {
    MessageRecord &record = messageLog().record;
    if (record.errors++ == 0) {
        record.firstError.assign(lines.begin(), lines.end());
    }
}

// Writes and shows a line of the log.
void logLine(std::string_view text) {
    const MessageLine line = text;
    observe(MessageKind::Info, {&line, 1});
    appendToLog(text);
    std::vector<MessageLine> &buffer = messageLog().LogLineBuffer;
    if (buffer.size() >= MessageLog::BufferLines) {
        buffer.erase(buffer.begin());
    }
    buffer.push_back(line);
    if (messageSink().logLine) {
        messageSink().logLine(text);
    }
}

void logLines(std::span<const MessageLine> lines) {
    for (const MessageLine &line : lines) {
        logLine(line.view());
    }
}

} // namespace

// Cancel ends the program at once, so the whole message has been written before the box.
void ShowErrorBox(std::span<const MessageLine> lines, bool mustBeSeen) {
    if (messageSink().box && !messageSink().box(lines, mustBeSeen)) {
        ShutDown();
    }
}

MessageLog &messageLog() {
    static MessageLog log;
    return log;
}

MessageSink &messageSink() {
    static MessageSink sink;
    return sink;
}

int OpenLogFiles(std::string_view name) {
    MessageLog &log = messageLog();
    log.file.reset();
    log.movedNotice.clear();
    const std::string directory =
        directoryOf(name).empty() ? logDirectory(log) : std::string(directoryOf(name));
    const std::string base = joinPath(directory, trimRight(baseNameOf(name)));
    log.logPath = base + ".log";
    log.errorPath = base + ".err";
    log.record = {};
    log.warningsBefore = 0;
    log.reported.clear();
    const int logStatus = deleteIfPresent(log.logPath);
    return logStatus != 0 ? logStatus : deleteIfPresent(log.errorPath);
}

void BeginCommandMessages() {
    MessageLog &log = messageLog();
    log.warningsBefore = log.record.warnings;
    log.rowBoxes.reset();
}

int warningsOfCommand() {
    const MessageLog &log = messageLog();
    return log.record.warnings - log.warningsBefore;
}

void ReportInfoLine(std::string_view text) {
    const MessageLine line = text;
    keepForList(MessageKind::Info, {&line, 1});
    logLine(text);
}

void ReportWarning(std::span<const MessageLine> lines) {
    observe(MessageKind::Warning, lines);
    keepForList(MessageKind::Warning, atMostFive(lines));
    const int count = ++messageLog().record.warnings;
    if (count < MessageLog::MostWarnings) {
        appendToErrorFile(atMostFive(lines), true);
    } else if (count == MessageLog::MostWarnings) {
        const MessageLine notice = "More than " + std::to_string(MessageLog::MostWarnings) +
                                   " error messages, no further messages will be logged.";
        appendToErrorFile({&notice, 1}, false);
    }
}

void ReportWarning(std::initializer_list<MessageLine> lines) {
    ReportWarning(std::span(lines.begin(), lines.size()));
}

void ReportError(std::span<const MessageLine> lines) {
    observe(MessageKind::Error, lines);
    keepForList(MessageKind::Error, atMostFive(lines));
    countError(lines);
    appendToErrorFile(atMostFive(lines), true);
    if (messageLog().quiet) {
        logLine("");
        logLines(atMostFive(lines));
        logLine("");
        return;
    }
    if (!holdsRowBox(atMostFive(lines))) {
        ShowErrorBox(atMostFive(lines), false);
    }
}

void ReportError(std::initializer_list<MessageLine> lines) {
    ReportError(std::span(lines.begin(), lines.size()));
}

void ReportNotice(NoticeLevel level, std::span<const MessageLine> lines) {
    const std::span<const MessageLine> said = atMostFive(lines);
    if (said.empty()) {
        return;
    }
    keepForList(level == NoticeLevel::Box      ? MessageKind::Error
                : level == NoticeLevel::Status ? MessageKind::Notice
                                               : MessageKind::Info,
                said);
    logLines(said);
    if (level == NoticeLevel::Log) {
        return;
    }
    const bool quiet = messageLog().quiet;
    if (messageSink().status && !quiet) {
        messageSink().status(said.front().view());
    }
    if (level == NoticeLevel::Box) {
        observe(MessageKind::Error, said);
        countError(said);
        appendToErrorFile(said, true);
        if (!quiet) {
            ShowErrorBox(said, true);
        }
    }
}

void ReportNotice(NoticeLevel level, std::initializer_list<MessageLine> lines) {
    ReportNotice(level, std::span(lines.begin(), lines.size()));
}

void ReportUnreadFile(std::string_view name, std::initializer_list<MessageLine> lines) {
    std::vector<std::string> &unread = messageLog().record.unreadFiles;
    if (std::find(unread.begin(), unread.end(), name) == unread.end()) {
        unread.emplace_back(name);
    }
    ReportNotice(NoticeLevel::Box, lines);
}

void ShutDown() {
    messageLog().file.reset();
    std::exit(messageSink().close ? messageSink().close() : 0);
}

} // namespace keldrin
