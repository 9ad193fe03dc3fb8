#include "projectfile/kept_file.h"

#include "base/safe_writer.h"
#include "messages/message_log.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace keldrin {

void reportWriteFailure(const std::string &path, const std::string &reason) {
    ReportError({WriteFailureText, path, reason});
}

bool keepOldFile(const std::string &path, std::string &reason) {
    std::ifstream file(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(file), {}};
    std::error_code error;
    if (!file || content.size() != std::filesystem::file_size(path, error)) {
        reason = "the old file cannot be kept";
        return false;
    }
    return writeWholeFile(path + "~", content, reason);
}

} // namespace keldrin
