#include "shell/edit_configuration.h"

#include "conditioning/configuration_dialog.h"
#include "shell/open_project.h"
#include "shell/watched_survey.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"
#include "toolkit/scripted/answering_backend.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <string>

namespace keldrin {
namespace {

/// A line of in-loop soundings with a loop of 100 m by 100 m.
class EditConfigurationTest : public testing::Test {
  protected:
    EditConfigurationTest() {
        ToolkitInit(backend, {"keldrin"});
        std::filesystem::copy(std::string(SourceDirectory) + "/examples/project/inloop.std", path);
        EXPECT_EQ(OpenProject(model, path), 0);
    }
    ~EditConfigurationTest() override { ToolkitClose(); }

    void setLoop(const std::string &size) {
        backend.beforeAnswer = [size](AnsweringBackend &user, int dialog) {
            if (dialog == ConfigurationDialog.number) {
                EXPECT_TRUE(user.edit(ConfigurationControl::LoopSizeX, size));
                EXPECT_TRUE(user.edit(ConfigurationControl::LoopSizeY, size));
            }
        };
        EXPECT_EQ(EditConfiguration(model, path), 0);
    }
    static float lastResistivity(const SurveyModel &model) {
        const SoundingRecord &record = model.sounding(1);
        return record.AResObs[static_cast<std::size_t>(record.NumTW - 1)];
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    AnsweringBackend backend;
    SurveyModel model;
    std::string path = directory.path("line.std");
};

TEST_F(EditConfigurationTest, ResistivitiesOfAnotherLoopAreThoseOfThatLoopInMemoryAndOnTheDisk) {
    const float before = lastResistivity(model);
    setLoop("400");
    // Late in time the resistivity goes with the loop's moment to the power 2/3.
    EXPECT_NEAR(lastResistivity(model) / before, std::pow(16.0, 2.0 / 3.0), 0.5);

    SurveyModel again;
    ASSERT_EQ(OpenProject(again, path), 0);
    SurveyModel computed;
    putFile(directory.path("fresh.std"), fileContent(path));
    std::string fresh = directory.path("fresh.std");
    ASSERT_EQ(OpenProject(computed, fresh), 0);
    for (SoundingRecord &record : computed.soundings()) {
        record.AResObs.fill(MissingValue);
    }
    surveyApparentResistivities(computed);
    for (int n = 1; n <= model.SoundingCount; ++n) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(model.sounding(n).NumTW); ++i) {
            const float expected = computed.sounding(n).AResObs[i];
            EXPECT_NEAR(model.sounding(n).AResObs[i], expected, 1.0E-3F * expected)
                << n << " " << i;
            EXPECT_NEAR(again.sounding(n).AResObs[i], expected, 1.0E-3F * expected)
                << n << " " << i;
        }
    }
}

} // namespace
} // namespace keldrin
