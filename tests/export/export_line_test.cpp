#include "export/export_line.h"
#include "export/exported_case.h"
#include "support/failing_files.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <map>
#include <string>

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::array AllFormats = {ExportFormat::Csv, ExportFormat::Gdf2, ExportFormat::Vtk};

class ExportTheLine : public testing::Test {
  protected:
    [[nodiscard]] std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> all;
        for (const auto &entry : std::filesystem::directory_iterator(directory.path())) {
            all[entry.path().filename().string()] = fileContent(entry.path().string());
        }
        return all;
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    std::string base = directory.path("line1");
};

TEST_F(ExportTheLine, WritesTheFilesOfEachFormatAndCountsWhatTheyHold) {
    const ExportOutcome outcome = ExportLine(lineOf(3, 4, 2), AllFormats, base);
    EXPECT_FALSE(outcome.failed());
    EXPECT_EQ(outcome.soundings, 3);
    EXPECT_EQ(outcome.windows, 12);
    EXPECT_EQ(outcome.layers, 6);
    EXPECT_EQ(outcome.written(), 6);
    EXPECT_THAT(outcome.results[1].files,
                ElementsAre(directory.path("line1.dfn"), directory.path("line1.dat")));
    const auto first = files();
    EXPECT_EQ(first.size(), 6U);
    static_cast<void>(ExportLine(lineOf(3, 4, 2), AllFormats, base));
    EXPECT_EQ(files(), first) << "the same bytes once more, under the same names";
}

// Field data in AMIRA format may be the project's own source, and bear its name.
TEST_F(ExportTheLine, FieldDataOfTheSameNameStay) {
    putFile(base + ".dat", "LINE: 1\n");
    const ExportOutcome outcome = ExportLine(lineOf(1, 2, 0), {{ExportFormat::Gdf2}}, base);
    EXPECT_THAT(outcome.results[0].files,
                ElementsAre(directory.path("line1_gdf2.dfn"), directory.path("line1_gdf2.dat")));
    EXPECT_EQ(fileContent(base + ".dat"), "LINE: 1\n");
    putFile(base + ".dfn", "DEFN   ST=RECD,RT=COMM;RT:A4;COMMENTS:A76\nDEFN 1 ST=RECD,RT=;x:I4\n");
    static_cast<void>(ExportLine(lineOf(1, 2, 0), {{ExportFormat::Gdf2}}, base));
    EXPECT_EQ(fileContent(base + ".dat"), "LINE: 1\n") << "defined by another program";
}

TEST_F(ExportTheLine, SoundingsOfAnotherTransmitterAreLeftOutAndTold) {
    SurveyModel model = lineOf(3, 2, 1);
    setSurveyType(model.control, FixedLoop);
    model.control.TxStn = 1.0;
    model.hTrn[0].TxStn = model.hTrn[2].TxStn = 1.0;
    model.hTrn[1].TxStn = 2.0;
    const ExportOutcome outcome = ExportLine(model, {{ExportFormat::Csv}}, base);
    EXPECT_EQ(outcome.soundings, 2);
    EXPECT_EQ(outcome.leftOut, 1);
    EXPECT_THAT(messages.infos,
                testing::Contains("1 soundings of other transmitters are not exported."));
    EXPECT_THAT(fileContent(base + "_soundings.csv"), HasSubstr("\n7,100,1,3,"))
        << "the others keep their numbers";
}

TEST_F(ExportTheLine, WithoutModelsThereIsNoCurtainAndTheOtherFormatsAreWritten) {
    const ExportOutcome outcome = ExportLine(lineOf(2, 2, 0), AllFormats, base);
    EXPECT_TRUE(outcome.failed());
    EXPECT_EQ(outcome.written(), 5);
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR: no VTK curtain: no sounding has both a layered model and a "
                            "position"));
    EXPECT_EQ(files().count("line1.vtk"), 0U);
}

TEST_F(ExportTheLine, WhereNothingCanBeWrittenThePathIsTold) {
    const std::string nowhere = directory.path("no_such_directory/line1");
    const ExportOutcome outcome = ExportLine(lineOf(2, 2, 1), {{ExportFormat::Vtk}}, nowhere);
    EXPECT_TRUE(outcome.failed());
    EXPECT_THAT(outcome.results[0].failure, StartsWith(nowhere + ".vtk: "));
    ASSERT_EQ(messages.errors.size(), 1U);
    EXPECT_THAT(messages.errors[0], HasSubstr(nowhere + ".vtk"));
}

// A row of one export under the columns of another would be read as other numbers.
TEST_F(ExportTheLine, TheFilesOfAFormatAreReplacedTogetherOrStay) {
    static_cast<void>(ExportLine(lineOf(2, 2, 1), AllFormats, base));
    const auto before = files();
    for (const FileCall call : {FileCall::Write, FileCall::Sync, FileCall::Rename}) {
        for (int number = 1; number <= 2; ++number) {
            const SpoiledCall spoiled{call, FileFault::Fails, number};
            const FailingFiles failing(spoiled);
            EXPECT_TRUE(ExportLine(lineOf(3, 3, 2), {{ExportFormat::Gdf2}}, base).failed());
            EXPECT_EQ(files(), before) << spoiled.text();
        }
    }
}

} // namespace
} // namespace keldrin
