// The example project and its models, cut at the end of every line and within lines:
// whatever is lost is reported wherever the file shows it.

#include "projectfile/model_file.h"
#include "projectfile/project_case.h"
#include "support/cut_lengths.h"
#include "support/source_directory.h"

#include <algorithm>

namespace keldrin {
namespace {

const std::string Example = std::string(SourceDirectory) + "/examples/project/inloop";

int windowsOf(const SurveyModel &model) {
    int windows = 0;
    for (int i = 0; i < model.SoundingCount; ++i) {
        windows += model.hTrn[static_cast<std::size_t>(i)].NumTW;
    }
    return windows;
}

int layersOf(const SurveyModel &model) {
    int layers = 0;
    for (int i = 0; i < model.SoundingCount; ++i) {
        layers += model.hTrn[static_cast<std::size_t>(i)].NumLayer;
    }
    return layers;
}

/// Rows of a project that are whole when it is cut; -1 where the cut is above its table.
int wholeRows(const std::string &text, std::size_t length) {
    const std::size_t table = text.find('\n', text.find("\nStation,") + 1) + 1;
    if (length < table) {
        return -1;
    }
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(length);
    const auto ended = std::count(text.begin() + static_cast<std::ptrdiff_t>(table), end, '\n');
    return static_cast<int>(ended) + (*end == '\n' ? 1 : 0);
}

class CutFiles : public ProjectCase {
  protected:
    bool wasTold() const {
        const auto saysSo = [](const std::string &line) {
            return line.find("may be cut") != std::string::npos ||
                   line.find("have a layered model") != std::string::npos;
        };
        return !messages.errors.empty() || !messages.warnings.empty() ||
               std::any_of(messages.infos.begin(), messages.infos.end(), saysSo);
    }
};

TEST_F(CutFiles, AProjectThatLostSomethingSaysSo) {
    const std::string whole = fileContent(Example + ".std");
    constexpr int soundings = 24;
    constexpr int windows = 24 * 26;
    for (const std::size_t length : cutLengths(whole)) {
        messages.warnings.clear();
        const int status = read(whole.substr(0, length));
        const bool less = model.SoundingCount < soundings || windowsOf(model) < windows;
        const bool shows = status != 0 || model.SoundingCount < soundings || length == 0 ||
                           whole[length - 1] != '\n';
        EXPECT_TRUE(wasTold() || !less || !shows) << "cut to " << length;
        EXPECT_TRUE(less) << "cut to " << length;
        const int rows = wholeRows(whole, length);
        EXPECT_TRUE(rows < 0 || windowsOf(model) == rows) << "cut to " << length;
    }
    EXPECT_EQ(read(whole.substr(0, whole.size() - 1)), 0);
    EXPECT_TRUE(model.source.project.content.whole) << "only the line end is missing";
    EXPECT_TRUE(messages.errors.empty());
}

TEST_F(CutFiles, AModelFileThatLostSomethingSaysSo) {
    ASSERT_EQ(read(fileContent(Example + ".std")), 0);
    const SurveyModel project = model;
    const std::string whole = fileContent(Example + ".m1d");
    const std::string models = directory.path("line.m1d");
    constexpr int layers = 24 * 22;
    for (const std::size_t length : cutLengths(whole)) {
        model = project;
        messages.errors.clear();
        messages.infos.clear();
        putFile(models, whole.substr(0, length));
        EXPECT_EQ(M1D_File_Read(model, models), 0);
        EXPECT_TRUE(wasTold() || layersOf(model) == layers) << "cut to " << length;
    }
}

} // namespace
} // namespace keldrin
