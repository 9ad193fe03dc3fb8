#include "export/exported_line.h"

#include "base/index.h"

#include "projectfile/table_file.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

double toThousandth(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

ExportedSounding exportedSounding(const ControlValues &control, const SoundingRecord &record,
                                  int ordinal) {
    ExportedSounding sounding{&control, &record, ordinal};
    sounding.windows = windowCount(record);
    sounding.layers = layerCount(record);
    sounding.fit = soundingFit(control, record);
    double depth = 0.0;
    for (std::size_t k = 0; k < sounding.layers; ++k) {
        depth += static_cast<double>(record.ThkInv[k]);
        sounding.edges[k + 1] = toThousandth(depth);
    }
    return sounding;
}

} // namespace

ExportedLine exportedLine(const SurveyModel &model) {
    ExportedLine line{&model.control, {}};
    int ordinal = 0;
    for (const SoundingRecord &record : model.soundings()) {
        ++ordinal;
        if (isLeftOut(model.control, record)) {
            ++line.leftOut;
            continue;
        }
        line.soundings.push_back(exportedSounding(model.control, record, ordinal));
        line.mostWindows = std::max(line.mostWindows, line.soundings.back().windows);
        line.mostLayers = std::max(line.mostLayers, line.soundings.back().layers);
    }
    return line;
}

} // namespace keldrin
