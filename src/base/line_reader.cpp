#include "base/line_reader.h"

#include "base/fixed_text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace keldrin {

namespace {
constexpr char EndMark = '\x1A';
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
} // namespace

LineReader::LineReader(std::size_t limit, std::size_t bufferSize)
    : limit_(limit), buffer_(std::max(bufferSize, limit + 2)) {}

bool LineReader::open(const std::string &path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        errorText_ = "is a directory";
        return false;
    }
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) {
        errorText_ = std::strerror(errno);
        return false;
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    fileSize_ = std::filesystem::file_size(path, error);
    fileSize_ = error ? 0 : fileSize_;
    refill();
    passOverByteOrderMark();
    return true;
}

void LineReader::openText(std::string_view text) {
    pending_ = text;
    sourceEnded_ = true;
    passOverByteOrderMark();
}

void LineReader::passOverByteOrderMark() {
    if (pending_.substr(0, ByteOrderMark.size()) == ByteOrderMark) {
        pending_.remove_prefix(ByteOrderMark.size());
    }
}

// Moves what is pending to the front of the buffer and reads behind it. False at the end.
bool LineReader::refill() {
    if (sourceEnded_) {
        return false;
    }
    const std::size_t kept = pending_.size();
    if (kept > 0) {
        std::memmove(buffer_.data(), pending_.data(), kept);
    }
    const std::size_t got =
        std::fread(buffer_.data() + kept, 1, buffer_.size() - kept, file_.get());
    if (got == 0) {
        sourceEnded_ = true;
        if (std::ferror(file_.get()) != 0) {
            fault_ = true;
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
        stopped_ = true;
        sourceEnded_ = true;
        inLongLine_ = false;
        pending_ = {};
        file_.reset();
    }
}

void LineReader::stopAtMark(std::size_t markPosition) {
    std::string_view rest = pending_.substr(markPosition + 1);
    endedAtMark_ = rest.find_first_not_of(" \r\n\t\x1A") != std::string_view::npos;
    pending_ = pending_.substr(0, markPosition);
    sourceEnded_ = true;
    file_.reset();
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
    if (end == std::string_view::npos && mark == std::string_view::npos &&
        (inLongLine_ || line.find_first_not_of(" \t\r") != std::string_view::npos)) {
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
