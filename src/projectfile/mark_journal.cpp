#include "projectfile/mark_journal.h"

#include "base/ascii.h"
#include "base/clock.h"
#include "base/line_reader.h"
#include "base/number_text.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "projectfile/data_columns.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace keldrin {

namespace {

constexpr std::size_t MostLine = 256; // bytes
constexpr std::size_t DateLength = 19;
constexpr std::string_view CutoffName = ",DataCutoff,";

// Receiver, transmitter and time: what names a window in the project file.
std::string windowKey(const SoundingRecord &sounding, std::size_t window) {
    constexpr std::array columns = {ColRxStn, ColTxStn, ColTWcenter};
    RowValues values{};
    loadSoundingFields(DataColumns, sounding, values);
    loadElementFields(DataColumns, sounding, window, values);
    std::string key;
    for (const DataColumn column : columns) {
        const EditDescriptor &edit = DataColumns[column].edit;
        if (DataColumns[column].type == CellType::R4) {
            appendNumberText(key, static_cast<float>(values[column]), edit);
        } else {
            appendNumberText(key, values[column], edit);
        }
        key += ',';
    }
    return key;
}

std::string heading(const std::string &journalPath) {
    return "KELDRIN skip marks of " + std::string(baseNameOf(journalPath)) +
           ".std, not yet saved: date,RxStn,TxStn,TWcenter,skipped\n";
}

bool openJournal(MarkJournal &journal) {
    if (journal.file.isOpen()) {
        return true;
    }
    const bool isNew = !pathExists(journal.path);
    if (!isNew && !isRegularFile(journal.path)) {
        errno = EINVAL;
        return false;
    }
    journal.file = openForAppending(journal.path);
    return journal.file.isOpen() && (!isNew || writeAll(journal.file, heading(journal.path)));
}

void giveUp(MarkJournal &journal) {
    ReportNotice(NoticeLevel::Log, {"Marks are kept in memory alone until the project is saved:",
                                    journal.path, std::strerror(errno)});
    journal = {};
}

std::string cutoffText(float cutoff) {
    return std::string(trimBlanks(formatReal("(F12.2)", cutoff)));
}

// False for any other line.
bool takeCutoffLine(std::string_view line, UnsavedMarks &marks) {
    const std::string_view rest = line.substr(std::min(DateLength, line.size()));
    if (!rest.starts_with(CutoffName)) {
        return false;
    }
    const std::string_view number = rest.substr(CutoffName.size());
    float cutoff = 0.0F;
    const auto [end, fault] = std::from_chars(number.data(), number.data() + number.size(), cutoff);
    const bool whole = fault == std::errc{} && end == number.data() + number.size();
    if (whole && cutoff > 0.0F && std::isfinite(cutoff)) {
        marks.date = line.substr(0, DateLength);
        marks.cutoff = cutoff;
    }
    return true;
}

// A line without its end is cut, so the key and the mark of any other are whole.
bool takeMarkLine(std::string_view line, UnsavedMarks &marks) {
    if (takeCutoffLine(line, marks)) {
        return true;
    }
    const std::size_t date = line.find(',');
    const std::size_t mark = line.rfind(',');
    if (date != DateLength || mark <= date || mark + 2 != line.size() ||
        (line.back() != '0' && line.back() != '1')) {
        return false;
    }
    marks.date = line.substr(0, date);
    marks.skipped[std::string(line.substr(date + 1, mark - date))] = line.back() == '1';
    return true;
}

/// Calls `act` with the error of every window that has a mark in the journal, and that mark.
template <class Model, class Act>
void forEachMark(Model &model, const UnsavedMarks &marks, Act act) {
    for (auto &sounding : model.soundings()) {
        const std::size_t windows = windowCount(sounding);
        for (std::size_t i = 0; i < windows; ++i) {
            const auto mark = marks.skipped.find(windowKey(sounding, i));
            if (mark != marks.skipped.end()) {
                act(sounding.TEMerr[i], mark->second);
            }
        }
    }
}

} // namespace

std::string markJournalPath(std::string_view projectPath) {
    return isProjectPath(projectPath) ? std::string(withoutExtension(projectPath)) + ".marks" : "";
}

void appendMarks(MarkJournal &journal, const SurveyModel &model,
                 std::span<const LineWindow> windows, std::optional<float> cutoff) {
    if (journal.path.empty() || (windows.empty() && !cutoff)) {
        return;
    }
    const DateTime now = clockNow();
    const std::string date = dateText(now) + " " + timeText(now);
    std::string text;
    if (cutoff) {
        text.append(date).append(CutoffName).append(cutoffText(*cutoff)).append("\n");
    }
    for (const auto &[station, window] : windows) {
        const SoundingRecord &sounding = model.sounding(station);
        text += date + "," + windowKey(sounding, window);
        text += isSkipped(sounding.TEMerr[window]) ? "1\n" : "0\n";
    }
    if (!openJournal(journal) || !writeAll(journal.file, text) ||
        fileOperations().sync(journal.file.number()) != 0) {
        giveUp(journal);
    }
}

std::optional<std::uintmax_t> markJournalLength(const MarkJournal &journal) {
    std::error_code error;
    const std::uintmax_t length = std::filesystem::file_size(journal.path, error);
    return error ? std::nullopt : std::optional(length);
}

bool cutMarkJournal(MarkJournal &journal, std::optional<std::uintmax_t> length) {
    if (journal.path.empty()) {
        return true;
    }
    journal.file.close(); // the next mark opens it again
    if (!length) {
        return !pathExists(journal.path) || fileOperations().remove(journal.path) == 0;
    }
    std::error_code error;
    std::filesystem::resize_file(journal.path, *length, error);
    return !error;
}

void dropMarkJournal(MarkJournal &journal) {
    journal.file.close();
    if (!journal.path.empty() && isRegularFile(journal.path) &&
        fileOperations().remove(journal.path) != 0) {
        ReportNotice(NoticeLevel::Log, {"This file of marks could not be removed:", journal.path,
                                        std::strerror(errno)});
    }
}

bool readMarkJournal(const std::string &path, UnsavedMarks &marks) {
    marks = {};
    if (path.empty() || !pathExists(path)) {
        return false;
    }
    LineReader reader(MostLine);
    bool readable = reader.open(path);
    std::string_view line;
    std::string last; // its end is known once the next one is asked for
    while (readable && reader.next(line) == LineStatus::Line) {
        takeMarkLine(last, marks);
        last = line;
    }
    if (!reader.endedInLine()) {
        takeMarkLine(last, marks);
    }
    readable = readable && !reader.failed();
    if (!readable) {
        ReportNotice(NoticeLevel::Box, {"Unsaved skip marks of this file could not be read:", path,
                                        std::string(reader.errorText())});
    }
    return readable;
}

UnsavedCount countUnsavedMarks(const SurveyModel &model, const UnsavedMarks &marks) {
    UnsavedCount count;
    count.unknown = static_cast<int>(marks.skipped.size());
    forEachMark(model, marks, [&count](float error, bool skipped) {
        count.changes += isSkipped(error) != skipped ? 1 : 0;
        --count.unknown;
    });
    if (marks.cutoff && cutoffText(*marks.cutoff) != cutoffText(model.control.DataCutoff)) {
        ++count.changes;
    }
    return count;
}

void takeUnsavedMarks(SurveyModel &model, const UnsavedMarks &marks) {
    forEachMark(model, marks, [](float &error, bool skipped) {
        error = isSkipped(error) == skipped ? error : withSkipMark(error, skipped);
    });
    model.control.DataCutoff = marks.cutoff.value_or(model.control.DataCutoff);
}

} // namespace keldrin
