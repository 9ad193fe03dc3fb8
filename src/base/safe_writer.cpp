#include "base/safe_writer.h"

#include "base/file_operations.h"
#include "base/file_transaction.h"

#include <new>

namespace keldrin {

WriteOutcome writeWholeFile(const std::string &path, std::string_view content) {
    FileTransaction transaction;
    if (transaction.stage(path, content) && transaction.putInPlace(path) && transaction.commit()) {
        return {.written = true};
    }
    transaction.takeBack();
    return {.failure = transaction.failure()};
}

WriteOutcome copyWholeFile(const std::string &from, const std::string &to) {
    try {
        std::string content;
        std::string failure;
        return readWholeFile(from, content, failure) ? writeWholeFile(to, content)
                                                     : WriteOutcome{.failure = failure};
    } catch (const std::bad_alloc &) {
        return {.failure = "out of memory"};
    }
}

bool appendToFile(const std::string &path, std::string_view content) {
    OpenFile file = openForAppending(path);
    return file.isOpen() && writeAll(file, content) && file.close();
}

} // namespace keldrin
