// Any bytes as a survey information file: whatever its records say, the import starts with usable
// station scaling, coil areas and control values.

#include "scratch_file.h"

#include "import/survey_information.h"
#include "messages/message_log.h"
#include "text/enumeration.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace {

using namespace keldrin;
using namespace keldrin::fuzz;

void requirePreset(const ImportPreset &preset) {
    for (const StationScale &scale : {preset.StnRescaleQdr, preset.StnRescaleClient}) {
        require(isPresent(scale.begin) && std::fabs(scale.increment) >= 0.001);
    }
    for (const float area : preset.RxAreaXYZ) {
        require(area >= 0.01F && std::isfinite(area));
    }
}

void requireControl(const ControlValues &control) {
    require(control.SurveyTypeIndex >= FixedLoop && control.SurveyTypeIndex <= CoincidentLoop);
    require(control.LengthUnitsIndex >= Metres && control.LengthUnitsIndex <= Feet);
    require(control.XTxLength > 0.0F && control.YTxLength > 0.0F && control.NTxTurn > 0);
    require(control.TxFreq > 0.0F && control.TxRamp > 0.0F && control.RxArea > 0.0F);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    messageLog() = MessageLog{};
    messageLog().quiet = true;
    enumerationMemo() = EnumerationMemo{};
    const std::string path = scratchPath(".mde");
    store(path, {reinterpret_cast<const char *>(data), size});
    SurveyModel model;
    MD_Init(model.metadata, true);
    STD_Init_Namelist(model);
    require(Mde_File_Input(model, path) == 0);
    requirePreset(model.preset);
    requireControl(model.control);
    return 0;
}
