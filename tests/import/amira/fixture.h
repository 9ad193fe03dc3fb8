#pragma once

#include "import/amira/file.h"
#include "import/survey_information.h"
#include "projectfile/project_file.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <string>

namespace keldrin {

/// Reads texts as AMIRA files, with a channel file of three channels beside them.
class AmiraTest : public testing::Test {
  protected:
    /// Both passes over a text, which gets a title line; the status of the last one.
    int read(const std::string &text) {
        const std::string path = directory.path("x.tem");
        putFile(path, "title LINE:9\n" + text);
        if (!channels.empty()) {
            putFile(directory.path("x.chn"), "title\n" + channels);
        }
        if (!information.empty()) {
            putFile(directory.path("x.mde"), information);
        }
        MD_Init(model.metadata, true);
        STD_Init_Namelist(model);
        Mde_File_Input(model, directory.path("x.mde"));
        countStatus = AMR_Count(model, path);
        if (countStatus != 0) {
            return countStatus;
        }
        const LineEntry &entry = model.lines.entries[chosen];
        selectLine(model, static_cast<int>(chosen) + 1);
        EXPECT_EQ(STD_Allocate_hTrn(model, capacity > 0 ? capacity : soundingsNeeded(entry)), 0);
        return AMR_Read(model, path, entry.LineLabel.view());
    }
    [[nodiscard]] const SoundingRecord &sounding(std::size_t i) const { return model.hTrn[i]; }
    /// The values of a sounding's windows, or their times.
    [[nodiscard]] std::vector<float> values(std::size_t i) const {
        const SoundingRecord &record = sounding(i);
        return {record.TEMobs.begin(), record.TEMobs.begin() + record.NumTW};
    }
    [[nodiscard]] std::vector<float> times(std::size_t i) const {
        const SoundingRecord &record = sounding(i);
        return {record.TWcenter.begin(), record.TWcenter.begin() + record.NumTW};
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    SurveyModel model;
    std::string channels = "DELAY\n1\n2\n4\n";
    std::string information;
    std::size_t chosen = 0;
    int capacity = 0;
    int countStatus = -1;
};

} // namespace keldrin
