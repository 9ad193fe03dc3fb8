#include "conditioning/data_cutoff.h"

#include "messages/message_log.h"

namespace keldrin {

int ApplyDataCutoff(SurveyModel &model) {
    if (model.SoundingCount <= 0) {
        return 1;
    }
    ReportInfoLine("");
    ReportInfoLine("Applying data error cutoff to set skip flags.");
    for (int i = 0; i < model.SoundingCount; ++i) {
        SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        for (std::size_t w = 0; w < static_cast<std::size_t>(record.NumTW); ++w) {
            if (record.TEMerr[w] >= model.control.DataCutoff) {
                record.TEMerr[w] = withSkipMark(record.TEMerr[w], true);
            }
        }
    }
    return 0;
}

} // namespace keldrin
