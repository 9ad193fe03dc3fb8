#include "conditioning/survey_configuration.h"

#include "conditioning/configuration_dialog.h"
#include "projectfile/project_file.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <gmock/gmock.h>

#include <string>

namespace keldrin {
namespace {

class SurveyConfiguration : public testing::Test {
  protected:
    SurveyConfiguration() {
        ToolkitInit(backend, {"test"});
        EXPECT_EQ(allocateSoundings(model, 1), 0);
        model.SoundingCount = 1;
        SoundingRecord &record = model.hTrn[0];
        record.Station = record.RxStn = record.TxStn = 100.0;
        record.NumTW = 1;
        record.TWcenter[0] = 1.0F;
        record.TEMobs[0] = 2.0F;
        model.control.LineAzimuth = 90.0F;
        model.control.TxFreq = 25.0F;
        setDefaultTxWaveform(model.control);
    }
    ~SurveyConfiguration() override { ToolkitClose(); }

    int editRamp(const char *text) {
        backend.beforeAnswer = [text](AnsweringBackend &user, int /*dialog*/) {
            user.edit(ConfigurationControl::Ramp, text);
        };
        std::string path = directory.path("x.std");
        return EditSurveyConfiguration(
            model, path, [](const ControlValues &, const std::string &) { return true; });
    }

    TemporaryDirectory directory;
    MessageRecorder messages;
    AnsweringBackend backend;
    SurveyModel model;
};

// A waveform that came from a file stays when the ramp is edited; the default shape follows it.
TEST_F(SurveyConfiguration, AnOwnWaveformStaysWhenTheRampIsEdited) {
    ControlValues &control = model.control;
    control.NTxWF = 3;
    control.TxWFT0 = 6.0F;
    control.TxWFT = {0.0F, 5.0F, 6.0F};
    control.TxWFI = {0.0F, 1.0F, 0.0F};
    const auto times = control.TxWFT;
    EXPECT_EQ(editRamp("80"), 0);
    EXPECT_EQ(control.TxRamp, 80.0F);
    EXPECT_EQ(control.NTxWF, 3);
    EXPECT_EQ(control.TxWFT, times);
    EXPECT_EQ(control.TxWFT0, 6.0F);

    setDefaultTxWaveform(control);
    EXPECT_EQ(editRamp("100"), 0);
    EXPECT_FLOAT_EQ(control.TxWFT0, 10.0F + 0.1F);
    EXPECT_FLOAT_EQ(control.TxWFT[1], 0.2F);
}

} // namespace
} // namespace keldrin
