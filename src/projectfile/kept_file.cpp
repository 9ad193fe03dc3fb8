#include "projectfile/kept_file.h"

#include "base/paths.h"
#include "base/safe_writer.h"
#include "messages/message_log.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <system_error>

namespace keldrin {

void reportWriteFailure(const std::string &path, const std::string &reason) {
    ReportError({WriteFailureText, path, reason});
}

bool copyWholeFile(const std::string &from, const std::string &to, std::string &reason) {
    try {
        std::ifstream file(from, std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(file), {}};
        std::error_code error;
        if (file && content.size() == std::filesystem::file_size(from, error)) {
            return writeWholeFile(to, content, reason);
        }
        reason = std::string(fileNameOf(from)) + " cannot be read";
    } catch (const std::bad_alloc &) {
        reason = "out of memory";
    }
    return false;
}

bool keepOldFile(const std::string &path, std::string &reason) {
    if (!copyWholeFile(path, path + "~", reason)) {
        reason = "the old file cannot be kept: " + reason;
        return false;
    }
    return true;
}

} // namespace keldrin
