#include "conditioning/data_cutoff.h"

#include "messages/message_log.h"

namespace keldrin {

int ApplyDataCutoff(SurveyModel &model) {
    if (model.SoundingCount <= 0) {
        return 1;
    }
    ReportInfoLine("");
    ReportInfoLine("Applying data error cutoff to set skip flags.");
    for (SoundingRecord &record : model.soundings()) {
        for (std::size_t w = 0; w < windowCount(record); ++w) {
            if (record.TEMerr[w] >= model.control.DataCutoff) {
                record.TEMerr[w] = withSkipMark(record.TEMerr[w], true);
            }
        }
    }
    return 0;
}

} // namespace keldrin
