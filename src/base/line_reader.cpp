#include "base/line_reader.h"

#include "base/fixed_text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace keldrin {

namespace {
constexpr char EndMark = '\x1A';
constexpr std::string_view Padding = " \r\n\t\x1A"; ///< no data after an end mark
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
} // namespace

LineReader::LineReader(std::size_t limit, std::size_t bufferSize)
    : limit_(limit), buffer_(std::max(bufferSize, limit + 2)) {}

bool LineReader::open(const std::string &path) {
    file_ = openForReading(path, errorText_);
    if (!file_.isOpen()) {
        return false;
    }
    std::error_code error;
    fileSize_ = std::filesystem::file_size(path, error);
    fileSize_ = error ? 0 : fileSize_;
    refill();
    passOverByteOrderMark();
    return true;
}

void LineReader::openText(std::string_view text) {
    pending_ = text;
    textSize_ = text.size();
    sourceEnded_ = true;
    passOverByteOrderMark();
}

void LineReader::passOverByteOrderMark() {
    if (pending_.substr(0, ByteOrderMark.size()) == ByteOrderMark) {
        pending_.remove_prefix(ByteOrderMark.size());
    }
}

// Moves the pending bytes to the front of the buffer and reads more after them. False at the end.
bool LineReader::refill() {
    if (sourceEnded_) {
        return false;
    }
    const std::size_t kept = pending_.size();
    if (kept > 0) {
        std::memmove(buffer_.data(), pending_.data(), kept);
    }
    const std::ptrdiff_t result = readSome(file_, buffer_.data() + kept, buffer_.size() - kept);
    const std::size_t got = result > 0 ? static_cast<std::size_t>(result) : 0;
    if (got == 0) {
        sourceEnded_ = true;
        if (result < 0) {
            fault_ = true;
            failed_ = true;
            errorText_ = std::strerror(errno);
        }
    }
    pending_ = std::string_view(buffer_.data(), kept + got);
    bytesRead_ += got;
    askWatch();
    return got > 0;
}

void LineReader::askWatch() {
    if (watch_ && !sourceEnded_ && !watch_(bytesRead_, fileSize_)) {
        stop();
    }
}

// A text in memory counts as taken piece by piece.
void LineReader::watchText() {
    const std::uintmax_t taken = textSize_ - std::min(textSize_, pending_.size());
    if (watch_ && textSize_ > 0 && taken >= bytesRead_ + buffer_.size()) {
        bytesRead_ = taken;
        if (!watch_(taken, textSize_)) {
            stop();
        }
    }
}

void LineReader::stop() {
    stopped_ = true;
    sourceEnded_ = true;
    inLongLine_ = false;
    pending_ = {};
    file_.close();
}

void LineReader::stopAtMark(std::size_t markPosition) {
    const std::string_view rest = pending_.substr(markPosition + 1);
    pending_ = pending_.substr(0, markPosition);
    endedAtMark_ = rest.find_first_not_of(Padding) != std::string_view::npos || anyDataLeft();
    sourceEnded_ = true;
    file_.close();
}

// Looks past the end mark at what has not been read yet.
bool LineReader::anyDataLeft() {
    std::array<char, 4096> piece{};
    while (!sourceEnded_) {
        const std::ptrdiff_t got = readSome(file_, piece.data(), piece.size());
        if (got <= 0) {
            break;
        }
        const std::string_view text(piece.data(), static_cast<std::size_t>(got));
        if (text.find_first_not_of(Padding) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

// Takes one line from what is pending. False when more must be read to see its end.
bool LineReader::takeLine(std::string_view &line) {
    std::size_t end = pending_.find('\n');
    const std::size_t mark = pending_.substr(0, end).find(EndMark);
    if (mark != std::string_view::npos) {
        stopAtMark(mark);
        end = std::string_view::npos;
    }
    if (end == std::string_view::npos && !sourceEnded_) {
        return false;
    }
    line = pending_.substr(0, end);
    // Blanks may be the rest of a line that was cut; in front of an end mark they pad the text.
    const std::string_view padding = mark == std::string_view::npos ? "\r" : Padding;
    if (end == std::string_view::npos &&
        (inLongLine_ || line.find_first_not_of(padding) != std::string_view::npos)) {
        endedInLine_ = true;
    }
    pending_.remove_prefix(std::min(pending_.size(), line.size() + 1));
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return true;
}

LineStatus LineReader::next(std::string_view &line) {
    inLongLine_ = false;
    watchText();
    while (!takeLine(line)) {
        if (pending_.size() == buffer_.size()) {
            // No line end in a full buffer: keep the head of the line, forget the rest.
            if (!inLongLine_) {
                cut_.assign(cutText(pending_, limit_));
                inLongLine_ = true;
            }
            pending_ = {};
        }
        refill();
    }
    if (fault_) {
        fault_ = false;
        pending_ = {};
        line = {};
        ++lineNumber_;
        return LineStatus::Fault;
    }
    if (inLongLine_) {
        line = cut_;
    } else if (line.empty() && pending_.empty() && sourceEnded_ &&
               (line.data() == nullptr || line.data() == pending_.data())) {
        ended_ = true;
        return LineStatus::End;
    }
    ++lineNumber_;
    if (firstCutLine_ == 0 && (inLongLine_ || line.size() > limit_)) {
        firstCutLine_ = lineNumber_;
    }
    line = cutText(line, limit_);
    return LineStatus::Line;
}

} // namespace keldrin
