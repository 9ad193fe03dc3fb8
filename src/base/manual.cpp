#include "base/manual.h"

#include "base/paths.h"
#include "base/program_help.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace keldrin {

namespace {

constexpr int NotThere = 1;
constexpr int NoSuchChapter = 2;

std::string listText(std::string_view program) {
    std::string text =
        std::string("Chapters of the manual, shown by ") + std::string(program) + " --help=NAME:\n";
    std::size_t longest = 0;
    for (const ManualChapter &chapter : ManualChapters) {
        longest = std::max(longest, chapter.name.size());
    }
    for (const ManualChapter &chapter : ManualChapters) {
        text.append("  ").append(chapter.name).append(longest + 2 - chapter.name.size(), ' ');
        text.append(chapter.title).append("\n");
    }
    return text;
}

} // namespace

std::string manualFolder() {
    if (const char *told = std::getenv("KELDRIN_MANUAL"); told != nullptr && *told != '\0') {
        return told;
    }
    const std::string program = executableDirectory();
    if (program.empty()) {
        return {};
    }
    const std::string inBuildTree = joinPath(program, "../manual");
    return pathExists(joinPath(inBuildTree, "index.txt"))
               ? inBuildTree
               : joinPath(program, "../share/doc/keldrin/manual");
}

int printManual(std::string_view program, std::string_view chapter) {
    if (chapter == "list") {
        return printText(listText(program));
    }
    const bool known =
        std::any_of(ManualChapters.begin(), ManualChapters.end(),
                    [chapter](const ManualChapter &other) { return other.name == chapter; });
    const std::string name(program);
    if (!known) {
        std::fprintf(stderr, "%s: the manual has no chapter %.*s\n%s", name.c_str(),
                     static_cast<int>(chapter.size()), chapter.data(), listText(program).c_str());
        return NoSuchChapter;
    }
    const std::string path = joinPath(manualFolder(), std::string(chapter) + ".txt");
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "%s: the manual is not installed; %s cannot be read\n", name.c_str(),
                     path.c_str());
        return NotThere;
    }
    return printText(std::string(std::istreambuf_iterator<char>(file), {}));
}

} // namespace keldrin
