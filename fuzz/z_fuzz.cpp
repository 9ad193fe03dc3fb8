// Any bytes as a report file: both passes end without a fault and agree, every reading that is kept
// can be used, no sounding stays without its keys, and the project can be written and read.

#include "scratch_file.h"

#include "conditioning/data_cutoff.h"
#include "conditioning/duplicates.h"
#include "conditioning/window_widths.h"
#include "import/import_steps.h"
#include "import/survey_information.h"
#include "import/z_file.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace keldrin;
using namespace keldrin::fuzz;

void require(bool truth) {
    if (!truth) {
        std::abort();
    }
}

void requireUsable(const SoundingRecord &record) {
    require(isPresent(record.Station) && record.NumTW >= 1 && record.NumTW <= MaxWindows);
    for (std::size_t w = 0; w < static_cast<std::size_t>(record.NumTW); ++w) {
        require(record.TWcenter[w] > 0.0F && std::isfinite(record.TEMobs[w]));
    }
}

void readAsImport(SurveyModel &model, const std::string &path) {
    MD_Init(model.metadata, true);
    STD_Init_Namelist(model);
    Mde_File_Input(model, scratchPath(".none"));
    if (Z_Count(model, path) != 0) {
        return;
    }
    const int counted = soundingsNeeded(model.lines.entries[0]);
    static_cast<void>(STD_Allocate_hTrn(model, counted));
    const int status = Z_Read(model, path, "");
    require(model.SoundingCount <= counted && (status == 0) == (model.SoundingCount > 0));
    for (std::size_t i = 0; i < static_cast<std::size_t>(model.SoundingCount); ++i) {
        requireUsable(model.hTrn[i]);
    }
    AverageDuplicateTransients(model);
    SetWindowWidths(model);
    ApplyDataCutoff(model);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    messageLog() = MessageLog{};
    messageLog().quiet = true;
    const std::string path = scratchPath(".z");
    store(path, {reinterpret_cast<const char *>(data), size});
    SurveyModel model;
    readAsImport(model, path);
    for (std::size_t i = 0; i < static_cast<std::size_t>(model.SoundingCount); ++i) {
        require(isPresent(model.hTrn[i].RxStn) && isPresent(model.hTrn[i].TxStn));
    }
    if (model.SoundingCount > 0) {
        std::string project = scratchPath(".std");
        static_cast<void>(STD_File_Write(model, project));
        SurveyModel again;
        require(STD_File_Read(again, project) == 0);
        require(again.SoundingCount > 0);
    }
    return 0;
}
