#include "base/index.h"
#include "projectfile/model_file.h"

#include "base/paths.h"
#include "messages/message_log.h"
#include "messages/watched_reading.h"
#include "projectfile/file_content.h"
#include "projectfile/kept_files.h"
#include "projectfile/model_columns.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

/// What a value of a layer is held to, and the column that a missing one is taken from; its own
/// column stands for the default of the table.
struct LayerLimit {
    ModelColumn column;
    ModelColumn standIn;
    float low;
    float high;
};
constexpr std::array LayerLimits = {
    LayerLimit{ModelResInv, ModelResInv, 1.0E-4F, 1.0E6F},
    LayerLimit{ModelRes0, ModelResInv, 1.0E-4F, 1.0E6F},
    LayerLimit{ModelRerr0, ModelRerr0, 0.1F, 9999.9F},
    LayerLimit{ModeldzW, ModeldzW, 0.01F, 100.0F},
    LayerLimit{ModelRerr, ModelRerr0, 0.1F, 9999.9F},
    LayerLimit{ModelRsns, ModelRsns, 0.0F, 100.0F},
};
constexpr float LeastThickness = 0.1F;
constexpr float MostThickness = 99999.9F;

/// The file as far as it is read.
struct ModelReading {
    SurveyModel &model;
    BlockCount blocks; ///< so far
    StationKeys keys;  ///< of the block
    int current = 0;   ///< sounding of the block, from 1; 0 none
    int layer = 0;     ///< layers of the block so far
    float top = 0.0F;  ///< elevation of the surface
    float base = 0.0F; ///< elevation of the lower face of the last layer
};

double transmitterOf(const ControlValues &control, bool hasColumn, const RowValues &values) {
    if (!hasColumn) {
        // A plain 1, not the selected transmitter: so are models of such files numbered.
        return control.SurveyTypeIndex == FixedLoop ? 1.0 : values[ModelRxStn];
    }
    const bool inLoop =
        control.SurveyTypeIndex != FixedLoop && control.SurveyTypeIndex != MovingLoop;
    return inLoop ? values[ModelRxStn] : values[ModelTxStn];
}

void limitLayer(RowValues &values) {
    for (const LayerLimit &limit : LayerLimits) {
        double &value = values[limit.column];
        if (!isPresent(value)) {
            value = limit.standIn != limit.column ? values[limit.standIn]
                                                  : ModelColumns[limit.column].defaultValue;
        }
        value = static_cast<double>(limited(static_cast<float>(value), limit.low, limit.high));
    }
}

/// Fills and limits the values of a row; false when it lacks one that it cannot do without.
bool settleRow(const ControlValues &control, bool hasTransmitter, RowValues &values) {
    if (!isPresent(values[ModelStation]) || !isPresent(values[ModelZinv]) ||
        !isPresent(values[ModelResInv])) {
        return false;
    }
    if (!isPresent(values[ModelRxStn])) {
        values[ModelRxStn] = values[ModelStation];
    }
    values[ModelTxStn] = transmitterOf(control, hasTransmitter, values);
    limitLayer(values);
    return true;
}

bool belongsTo(const SurveyModel &model, int sounding, const StationKeys &keys) {
    const SoundingRecord &record = model.sounding(sounding);
    return isPresent(keys.TxStn) && sameKeys({record.Station, record.RxStn, record.TxStn}, keys);
}

int findSounding(const SurveyModel &model, const StationKeys &keys) {
    for (int sounding = 1; sounding <= model.SoundingCount; ++sounding) {
        if (belongsTo(model, sounding, keys)) {
            return sounding;
        }
    }
    return 0;
}

/// A block's first row gives the surface; its layer values only repeat those of the next row.
void openBlock(ModelReading &reading, const StationKeys &keys, float elevation) {
    reading.keys = keys;
    reading.current = std::min(reading.current + 1, reading.model.SoundingCount);
    if (!belongsTo(reading.model, reading.current, keys)) {
        reading.current = findSounding(reading.model, keys);
    }
    reading.top = elevation;
    reading.base = elevation;
    reading.layer = 0;
}

void addLayer(ModelReading &reading, const RowValues &values) {
    if (reading.current == 0 || reading.layer >= MaxLayers) {
        return;
    }
    const auto elevation = static_cast<float>(values[ModelZinv]);
    const float thickness =
        limited(2.0F * (reading.base - elevation), LeastThickness, MostThickness);
    reading.base -= thickness; // by what the layer was limited to, so that the sum stays true
    SoundingRecord &record = reading.model.sounding(reading.current);
    const std::size_t layer = asIndex(reading.layer++);
    record.NumLayer = reading.layer;
    record.ThkInv[layer] = thickness;
    record.ZMid[layer] = -std::fabs(elevation - reading.top);
    storeElementFields(ModelColumns, values, layer, record);
    reading.model.ModelLayerCount = std::max(reading.model.ModelLayerCount, reading.layer);
}

void readRows(ModelReading &reading, TableScan &scan) {
    RowValues values{};
    while (nextTableRow(scan, values)) {
        if (!settleRow(reading.model.control, hasColumn(scan, ModelTxStn), values)) {
            continue;
        }
        const StationKeys keys = {values[ModelStation], values[ModelRxStn], values[ModelTxStn]};
        reading.blocks.add(keys);
        if (sameKeys(keys, reading.keys)) {
            addLayer(reading, values);
        } else {
            openBlock(reading, keys, static_cast<float>(values[ModelZinv]));
        }
    }
}

void noteContent(const ModelReading &reading, const TableScan &scan) {
    reading.model.source.models.content = {.soundings = reading.blocks.withLayers(),
                                           .rows = scan.rows,
                                           .whole =
                                               isWholeTable(scan) && !reading.blocks.lastIsShort()};
}

int soundingsWithLayers(const SurveyModel &model) {
    return static_cast<int>(std::ranges::count_if(
        model.soundings(), [](const SoundingRecord &record) { return record.NumLayer > 0; }));
}

int soundingsOfFile(const SurveyModel &model) {
    return static_cast<int>(
        std::ranges::count_if(model.soundings(), [&](const SoundingRecord &record) {
            return !isLeftOut(model.control, record);
        }));
}

void reportFaults(const ModelReading &reading, const TableScan &scan, const std::string &path) {
    const SurveyModel &model = reading.model;
    const int layered = soundingsWithLayers(model);
    const int soundings = soundingsOfFile(model);
    const std::string counts = std::to_string(layered) + " of " + std::to_string(soundings) +
                               " soundings have a layered model.";
    if (!model.source.models.content.whole) {
        const std::string why = wholenessText(scan);
        ReportNotice(NoticeLevel::Box,
                     {"WARNING: This layered-model file is not whole.", path, counts,
                      why.empty() ? "Its last model has fewer layers than the others." : why});
    } else if (layered < soundings) {
        ReportNotice(NoticeLevel::Status, {counts});
    }
    if (scan.lacksEnd && model.source.models.content.whole) {
        ReportInfoLine("The last line has no line end: it may be cut.");
    }
}

} // namespace

std::string modelPathOf(const std::string &projectPath) {
    // Beside a project that was kept lie the models that were kept with it.
    return sideFilePath(projectPath, ModelExtension + std::string(keptSuffix(projectPath)));
}

int M1D_File_Read(SurveyModel &model, const std::string &path) {
    constexpr int noSoundings = 1;
    constexpr int stopped = 1;
    constexpr int noFile = 2;
    if (model.SoundingCount < 1) {
        return noSoundings;
    }
    if (!pathExists(path)) {
        return noFile;
    }
    LineReader reader(MostTableLine);
    if (!reader.open(path)) {
        ReportNotice(NoticeLevel::Box,
                     {"ERROR while opening layered-model file", path, reader.errorText()});
        return noFile;
    }
    ReportInfoLine("Reading layered-model parameters from");
    ReportInfoLine(path);
    WatchedReading watched(reader, path);
    model.source.models = sourceOf(path, {}); // a change meanwhile must be seen by the next write
    ModelReading reading{model, {}, {}};
    TableScan scan = beginTableScan(ModelFormat, reader);
    readRows(reading, scan);
    if (watched.stopped()) {
        model.source.models = {};
        return stopped;
    }
    noteContent(reading, scan);
    reportFaults(reading, scan, path);
    ReportInfoLine(std::to_string(reading.blocks.blocks()) + " layered-models read from " +
                   std::string(fileNameOf(path)));
    return 0;
}

} // namespace keldrin
