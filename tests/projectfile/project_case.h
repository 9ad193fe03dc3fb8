#pragma once

#include "base/clock.h"
#include "projectfile/project_file.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

namespace keldrin {

inline constexpr std::string_view LabelLine =
    "Station,East,North,Elevation,RxStn,TxStn,TWcenter,TWwidth,TEMobs,TEMerr,"
    "TEMwgtX,TEMwgtY,TEMwgtZ,TEMcalc,AResObs,AResCalc\n";
inline constexpr std::string_view OneRow = "100,1,2,3,100,100,0.1,0.05,5.00000E+00,3,0,0,1,,,\n";

/// A project file of a test's own and the model that it is read into, at a fixed time.
class ProjectCase : public testing::Test {
  protected:
    ProjectCase() { fixClock(DateTime{2021, 5, 14, 9, 30, 0}); }
    ~ProjectCase() override { fixClock({}); }

    int read(std::string_view content) {
        putFile(path, content);
        messages.errors.clear();
        messages.infos.clear();
        return STD_File_Read(model, path);
    }

    /// Reads a group with these assignments and a table of one row.
    int readGroup(std::string_view assignments) {
        return read("&KELDRIN\n" + std::string(assignments) + "\n/\n" + std::string(LabelLine) +
                    std::string(OneRow));
    }

    /// Reads a table after a group with these assignments, values in nV/Am2.
    int readTable(std::string_view table, std::string_view assignments = "") {
        return read("&KELDRIN TEMUnits='nV/Am2'\n" + std::string(assignments) + "\n/\n" +
                    std::string(table));
    }

    std::string written() {
        static_cast<void>(STD_File_Write(model, path));
        return fileContent(path);
    }

    [[nodiscard]] const SoundingRecord &sounding(std::size_t i) const { return model.hTrn[i]; }

    TemporaryDirectory directory;
    MessageRecorder messages;
    SurveyModel model;
    std::string path = directory.path("line.std");
};

} // namespace keldrin
