// Any bytes as an AMIRA file and, behind a line "%%", the channel file beside it: both passes end
// without a fault and agree, every window that is kept can be used, and the project can be written
// and read.

#include "scratch_file.h"

#include "conditioning/data_cutoff.h"
#include "conditioning/duplicates.h"
#include "conditioning/window_widths.h"
#include "import/amira/file.h"
#include "import/import_steps.h"
#include "import/survey_information.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"
#include "text/enumeration.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

using namespace keldrin;
using namespace keldrin::fuzz;

constexpr std::string_view Separator = "\n%%\n";

void require(bool truth) {
    if (!truth) {
        std::abort();
    }
}

void requireUsable(const SoundingRecord &record) {
    require(isPresent(record.RxStn) && isPresent(record.TxStn));
    require(record.NumTW >= 1 && record.NumTW <= MaxWindows);
    for (std::size_t w = 0; w < static_cast<std::size_t>(record.NumTW); ++w) {
        require(record.TWcenter[w] > 0.0F && std::isfinite(record.TEMobs[w]));
    }
}

std::string storeFiles(std::string_view packed) {
    std::string path = scratchPath(".tem");
    const std::string channels = scratchPath(".chn");
    const std::size_t end = packed.find(Separator);
    store(path, packed.substr(0, end));
    if (end == std::string_view::npos) {
        std::filesystem::remove(channels);
    } else {
        store(channels, packed.substr(end + Separator.size()));
    }
    return path;
}

void readAsImport(SurveyModel &model, const std::string &path) {
    MD_Init(model.metadata, true);
    STD_Init_Namelist(model);
    Mde_File_Input(model, scratchPath(".none"));
    if (AMR_Count(model, path) != 0) {
        return;
    }
    const LineEntry entry = model.lines.entries[0];
    const int counted = soundingsNeeded(entry);
    static_cast<void>(STD_Allocate_hTrn(model, counted));
    const int status = AMR_Read(model, path, entry.LineLabel.view());
    require(model.SoundingCount <= counted && (status != 0 || model.SoundingCount > 0));
    if (status != 0) {
        model.SoundingCount = 0;
        return;
    }
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
    enumerationMemo() = EnumerationMemo{};
    SurveyModel model;
    readAsImport(model, storeFiles({reinterpret_cast<const char *>(data), size}));
    if (model.SoundingCount > 0) {
        std::string project = scratchPath(".std");
        static_cast<void>(STD_File_Write(model, project));
        SurveyModel again;
        static_cast<void>(STD_File_Read(again, project));
    }
    return 0;
}
