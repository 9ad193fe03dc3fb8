#include "projectfile/kept_files.h"

#include "base/ascii.h"
#include "base/file_operations.h"
#include "base/file_transaction.h"
#include "base/paths.h"
#include "base/safe_writer.h"
#include "projectfile/file_content.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

namespace keldrin {

namespace fs = std::filesystem;

namespace {

/// The first rule that applies holds.
constexpr std::array KeepRules = {
    KeepRule{[](const FileChange &change) { return change.relation == Relation::Other; },
             Models::Moved},
    KeepRule{[](const FileChange &change) { return change.relation == Relation::Changed; },
             Models::Copied},
    KeepRule{[](const FileChange &change) { return change.relation == Relation::Spoiled; },
             Models::Copied},
    KeepRule{[](const FileChange &change) { return change.old.whole && !change.next.whole; },
             Models::Copied},
    KeepRule{[](const FileChange &change) {
                 return change.relation == Relation::Same && !change.old.whole;
             },
             Models::Copied},
    KeepRule{[](const FileChange &change) { return holdsLess(change.next, change.old); },
             Models::Copied},
};

bool haveEqualContent(const std::string &a, const std::string &b) {
    std::string contentA;
    std::string contentB;
    std::string failure;
    return isRegularFile(b) && readWholeFile(a, contentA, failure) &&
           readWholeFile(b, contentB, failure) && contentA == contentB;
}

} // namespace

const KeepRule *keepRuleFor(const FileChange &change) {
    const auto *rule = std::find_if(KeepRules.begin(), KeepRules.end(),
                                    [&](const KeepRule &r) { return r.applies(change); });
    return rule == KeepRules.end() ? nullptr : rule;
}

std::string keptName(const std::string &path, int rows,
                     FileContent (*examine)(const std::string &)) {
    std::string name = path + "~";
    if (examine != nullptr && isRegularFile(name) && examine(name).rows <= rows) {
        return name;
    }
    std::error_code error;
    for (int n = 2; fs::exists(fs::symlink_status(name, error)); ++n) {
        name = path + "~" + std::to_string(n) + "~";
    }
    return name;
}

std::string_view keptSuffix(std::string_view path) {
    if (path.empty() || path.back() != '~') {
        return {};
    }
    const std::size_t last = path.size() - 1;
    const std::size_t digits = path.find_last_not_of("0123456789", last - 1);
    const bool numbered =
        digits != std::string_view::npos && digits < last - 1 && path[digits] == '~';
    return path.substr(numbered ? digits : last);
}

KeptCopy copyToKeep(const std::string &path) {
    KeptCopy copy;
    if (!isRegularFile(path)) {
        return copy;
    }
    if (haveEqualContent(path, path + "~")) {
        copy.name = path + "~";
        return copy;
    }
    const std::string name = keptName(path, 0, nullptr);
    const WriteOutcome outcome = copyWholeFile(path, name);
    if (outcome.written) {
        copy.name = name;
        copy.isNew = true;
    } else {
        copy.failure = outcome.failure;
    }
    return copy;
}

void settleCopy(KeptCopy &copy, const std::string &path,
                FileContent (*examine)(const std::string &)) {
    const std::string name = keptName(path, examine(copy.name).rows, examine);
    if (!copy.isNew || name == copy.name || name != path + "~") {
        return; // the free name is the right one
    }
    FileTransaction transaction;
    if (transaction.keepAs(copy.name, name) && transaction.takeAway(copy.name) &&
        transaction.commit()) {
        copy.name = name;
    }
}

void dropCopy(const KeptCopy &copy) {
    if (copy.isNew) {
        fileOperations().remove(copy.name);
    }
}

} // namespace keldrin
