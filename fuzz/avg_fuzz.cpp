// Any bytes as a field data file: both passes, merging and widths must end without a fault, and
// what they leave must be writable and readable as a project.

#include "scratch_file.h"

#include "conditioning/data_cutoff.h"
#include "conditioning/duplicates.h"
#include "conditioning/window_widths.h"
#include "import/avg_file.h"
#include "import/import_steps.h"
#include "import/survey_information.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"
#include "text/enumeration.h"

#include <cstdint>
#include <string>

namespace {

using keldrin::fuzz::scratchPath;

void readAsImport(keldrin::SurveyModel &model, const std::string &path) {
    keldrin::MD_Init(model.metadata, true);
    keldrin::STD_Init_Namelist(model);
    keldrin::Mde_File_Input(model, scratchPath(".none"));
    if (keldrin::AVG_Count(model, path) != 0) {
        return;
    }
    const keldrin::LineEntry entry = model.lines.entries[0];
    model.preset.SelectedArrayIndex = entry.ArrayIndex;
    static_cast<void>(keldrin::STD_Allocate_hTrn(model, keldrin::soundingsNeeded(entry)));
    keldrin::AVG_Read(model, path, entry.LineLabel.view());
    keldrin::AverageDuplicateTransients(model);
    keldrin::SetWindowWidths(model);
    keldrin::ApplyDataCutoff(model);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    keldrin::messageLog() = keldrin::MessageLog{};
    keldrin::messageLog().quiet = true;
    keldrin::enumerationMemo() = keldrin::EnumerationMemo{};
    const std::string path = scratchPath(".avg");
    keldrin::fuzz::store(path, {reinterpret_cast<const char *>(data), size});
    keldrin::SurveyModel model;
    readAsImport(model, path);
    if (model.SoundingCount > 0) {
        std::string project = scratchPath(".std");
        static_cast<void>(keldrin::STD_File_Write(model, project));
        keldrin::SurveyModel again;
        static_cast<void>(keldrin::STD_File_Read(again, project));
    }
    return 0;
}
