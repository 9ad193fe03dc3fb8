#pragma once

#include "base/fixed_text.h"

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// All output to the user that is no dialog: progress goes to a log file, warnings and errors go to
// an error file. What shows it, and the box of an error, is the program's own (message_sink.h). At
// most 127 warnings are written, the 128th is a notice.

/// One line of a message; longer text is cut to 128 bytes at the start of a character.
using MessageLine = FixedText<128>;

enum class MessageKind { Info, Warning, Error, Notice };

/// How far a notice goes.
enum class NoticeLevel {
    Log,    ///< the log
    Status, ///< the log, and its first line in the status bar until the next command
    Box,    ///< data are at stake: these two, the error file, and a box that is shown even when the
            ///< user wants to see no further messages
};

/// What was reported since the files of the log were opened, for summaries.
struct MessageRecord {
    int warnings = 0;                     ///< warnings, those past the limit of the file included
    int errors = 0;                       ///< errors and notices of level Box
    std::vector<MessageLine> firstError;  ///< the lines of the first of these errors
    std::vector<std::string> unreadFiles; ///< names of the files of ReportUnreadFile()
};

/// A message as it was reported, for the list of messages.
struct ReportedMessage {
    MessageKind kind = MessageKind::Info;
    std::string file; ///< name of the file that was being read; blank: none
    int row = 0;      ///< its line that was read last; 0: none, or it was read to its end
    std::vector<std::string> lines;
};

class ReadingPlace;
struct RowBoxes;

/// State of the message log. One per process, see messageLog().
struct MessageLog {
    static constexpr int BufferLines = 48;
    static constexpr int MostWarnings = 128;
    static constexpr int MostGraphicsErrors = 20;
    static constexpr std::size_t MostReported = 10000; ///< messages of this run that are kept
    static constexpr int MostLines = 5;                ///< lines of one error or warning

    std::vector<MessageLine> LogLineBuffer; ///< the newest lines, at most 48
    std::vector<ReportedMessage> reported;  ///< log and messages of this run, see F2
    std::string logPath;                    ///< full path of the log file
    std::string errorPath;                  ///< full path of the error file
    std::string movedNotice;                ///< first log line when the files lie elsewhere
    MessageRecord record;
    int warningsBefore = 0;                     ///< of `record`, when the current command began
    std::vector<const ReadingPlace *> readings; ///< files that are being read, the innermost last
    std::shared_ptr<RowBoxes> rowBoxes;         ///< of the current command, see reading_place.h
    int GraphicsErrorCount = 0;                 ///< toolkit errors so far, never reset during a run
    /// Errors and notices go only to the log and the error file; the caller that sets this informs
    /// the user.
    bool quiet = false;
    /// Called with every message before it is written, for tests.
    std::function<void(MessageKind, std::span<const MessageLine>)> observer;

    struct CloseFile {
        void operator()(std::FILE *open) const { std::fclose(open); }
    };
    std::unique_ptr<std::FILE, CloseFile> file; ///< open from the first logged line to the end
};

MessageLog &messageLog();

/// Names the log and error files and deletes older ones of these names.
/// name     base name with optional directory; ".log" and ".err" replace its extension. Without a
///          directory the files lie in the working directory or, where that is not writable, in
///          the user's state directory, and the first log line says so
/// returns  0, or 1 when an older file could not be deleted
int OpenLogFiles(std::string_view name);

/// A command of the user begins: its warnings count from here, and boxes about rows are shown anew.
void BeginCommandMessages();

/// Warnings since the current command began.
int warningsOfCommand();

/// Logs and shows one line of progress.
void ReportInfoLine(std::string_view text);

/// Writes a warning of at most 5 lines to the error file, within the limit of 127.
void ReportWarning(std::span<const MessageLine> lines);
void ReportWarning(std::initializer_list<MessageLine> lines);

/// Writes an error of at most 5 lines to the error file and shows the box. Cancel on the box ends
/// the program.
void ReportError(std::span<const MessageLine> lines);
void ReportError(std::initializer_list<MessageLine> lines);

/// Reports what the user must not miss: a kept copy, a stale model, a failed write.
///
/// The one road for it: a caller chooses the level by what is at stake and says it once for its
/// cause. Cancel on the box of level Box ends the program, as it does for an error.
/// lines  at most 5; every line goes to the log
void ReportNotice(NoticeLevel level, std::span<const MessageLine> lines);
void ReportNotice(NoticeLevel level, std::initializer_list<MessageLine> lines);

/// Reports that an existing input file could not be read, or not to its end: a notice of level Box,
/// since what is made without it looks as if nothing were missing.
/// name  of the file, kept in the record for summaries
void ReportUnreadFile(std::string_view name, std::initializer_list<MessageLine> lines);

/// Shows the box of an error that was written before; Cancel ends the program.
/// mustBeSeen  it is shown even when the user wants no further messages
void ShowErrorBox(std::span<const MessageLine> lines, bool mustBeSeen);

/// Closes the log and what shows it and ends the process, with neither message nor save.
[[noreturn]] void ShutDown();

} // namespace keldrin
