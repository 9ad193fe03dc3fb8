// The example surveys, each file of them cut at the end of every line and within lines: whatever is
// lost is reported wherever the file shows it.

#include "import/amira/file.h"
#include "import/avg_file.h"
#include "import/import_steps.h"
#include "import/station_file.h"
#include "import/survey_information.h"
#include "import/z_file.h"
#include "projectfile/project_file.h"
#include "support/cut_lengths.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace keldrin {
namespace {

constexpr std::size_t RowsKept = 120; ///< of a long file, at its begin and at its end

/// A file of an example survey that is cut, and how the survey's data are read.
struct CutCase {
    const char *survey;
    const char *data; ///< extension of the data file
    const char *cut;  ///< extension of the file that is cut
    int (*count)(SurveyModel &, const std::string &);
    int (*read)(SurveyModel &, const std::string &, std::string_view);
};

void PrintTo(const CutCase &cut, std::ostream *out) {
    *out << cut.survey << cut.data << " with " << cut.cut << " cut";
}

constexpr CutCase Cases[] = {
    {"inloop", ".avg", ".avg", AVG_Count, AVG_Read},
    {"fixedloop", ".avg", ".avg", AVG_Count, AVG_Read},
    {"movingloop", ".avg", ".avg", AVG_Count, AVG_Read},
    {"movingloop", ".avg", ".mde", AVG_Count, AVG_Read},
    {"movingloop", ".avg", ".stn", AVG_Count, AVG_Read},
    {"coincident_avg", ".avg", ".avg", AVG_Count, AVG_Read},
    {"coincident", ".z", ".z", Z_Count, Z_Read},
    {"coincident", ".z", ".mde", Z_Count, Z_Read},
    {"coincident", ".z", ".stn", Z_Count, Z_Read},
    {"amira_uv", ".tem", ".tem", AMR_Count, AMR_Read},
    {"amira_nt", ".tem", ".tem", AMR_Count, AMR_Read},
    {"amira_uv", ".tem", ".chn", AMR_Count, AMR_Read},
    {"amira_uv", ".tem", ".mde", AMR_Count, AMR_Read},
    {"amira_uv", ".tem", ".stn", AMR_Count, AMR_Read},
};

std::vector<std::string> linesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line + "\n");
    }
    return lines;
}

/// A long table without the rows of its middle, which are read as those before them.
std::string shortened(const std::string &text) {
    const auto isRow = [](const std::string &line) {
        return line.find_first_of("0123456789") == line.find_first_not_of(' ');
    };
    const std::vector<std::string> lines = linesOf(text);
    const auto rows = static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(), isRow));
    std::string out;
    std::size_t row = 0;
    for (const std::string &line : lines) {
        row += isRow(line) ? 1 : 0;
        if (!isRow(line) || row <= RowsKept || row + RowsKept > rows) {
            out += line;
        }
    }
    return out;
}

/// What was read of a survey.
struct Yield {
    int soundings = 0;
    int windows = 0;
    std::size_t stations = 0;
    [[nodiscard]] bool isLessThan(const Yield &whole) const {
        return soundings < whole.soundings || windows < whole.windows || stations < whole.stations;
    }
};

class CutSurveys : public testing::TestWithParam<CutCase> {
  protected:
    CutSurveys() {
        for (const char *extension : {GetParam().data, ".mde", ".stn", ".chn"}) {
            const std::string example = Examples + GetParam().survey + extension;
            if (std::filesystem::exists(example)) {
                std::filesystem::copy(example, file(extension));
            }
        }
    }
    [[nodiscard]] std::string file(const char *extension) const {
        return directory.path(std::string("x") + extension);
    }

    Yield read() {
        messages.warnings.clear();
        messages.errors.clear();
        Yield yield;
        MD_Init(model.metadata, true);
        STD_Init_Namelist(model);
        model.SoundingCount = 0;
        Mde_File_Input(model, file(".mde"));
        StationTable stations;
        Stn_File_Input(file(".stn"), stations);
        yield.stations = stations.size();
        const std::string data = file(GetParam().data);
        if (GetParam().count(model, data) != 0) {
            return yield;
        }
        selectLine(model, 1);
        const LineEntry entry = model.lines.entries[0];
        EXPECT_EQ(STD_Allocate_hTrn(model, soundingsNeeded(entry)), 0);
        static_cast<void>(GetParam().read(model, data, entry.LineLabel.view()));
        yield.soundings = model.SoundingCount;
        for (int i = 0; i < model.SoundingCount; ++i) {
            yield.windows += model.hTrn[static_cast<std::size_t>(i)].NumTW;
        }
        return yield;
    }

    const std::string Examples = std::string(SourceDirectory) + "/examples/";
    TemporaryDirectory directory;
    MessageRecorder messages;
    SurveyModel model;
};

TEST_P(CutSurveys, WhatIsLostIsTold) {
    const std::string cutFile = file(GetParam().cut);
    const std::string text = shortened(fileContent(cutFile));
    putFile(cutFile, text);
    const Yield whole = read();
    ASSERT_GT(whole.soundings, 0);
    ASSERT_GT(whole.stations, 0U);
    const std::size_t toldOfWhole = messages.warnings.size() + messages.errors.size();
    for (const std::size_t length : cutLengths(text)) {
        putFile(cutFile, text.substr(0, length));
        const Yield yield = read();
        const bool shows =
            yield.soundings == 0 || yield.stations == 0 || (length > 0 && text[length - 1] != '\n');
        EXPECT_TRUE(messages.warnings.size() + messages.errors.size() > toldOfWhole || !shows ||
                    !yield.isLessThan(whole))
            << "cut to " << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, CutSurveys, testing::ValuesIn(Cases));

} // namespace
} // namespace keldrin
