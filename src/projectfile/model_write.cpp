#include "projectfile/model_file.h"

#include "base/clock.h"
#include "base/paths.h"
#include "base/safe_writer.h"
#include "messages/message_log.h"
#include "projectfile/kept_file.h"
#include "projectfile/model_columns.h"

#include <algorithm>
#include <new>

namespace keldrin {

namespace {

/// Appends the rows of one sounding. The elevations are summed in 32-bit reals.
void appendSounding(std::string &out, const SoundingRecord &record) {
    RowValues values{};
    loadSoundingFields(ModelColumns, record, values);
    loadElementFields(ModelColumns, record, 0, values);
    auto base = static_cast<float>(record.Elevation);
    values[ModelZinv] = static_cast<double>(base);
    appendTableRow(out, ModelColumns, values);
    const int layers = std::min(record.NumLayer, MaxLayers);
    for (int i = 0; i < layers; ++i) {
        const auto layer = static_cast<std::size_t>(i);
        loadElementFields(ModelColumns, record, layer, values);
        values[ModelZinv] = static_cast<double>(base - record.ThkInv[layer] / 2.0F);
        base -= record.ThkInv[layer];
        appendTableRow(out, ModelColumns, values);
    }
}

bool holdsLayers(const std::string &path) {
    LineReader reader(MostTableLine);
    // What cannot be looked at is not thrown away.
    return isRegularFile(path) &&
           (!reader.open(path) || anyRowWith(ModelFormat, reader, ModelResInv));
}

} // namespace

int appendModelFile(const SurveyModel &model, std::string &out) {
    appendLabelLine(out, ModelColumns);
    out.append("\"").append(writerStamp(clockNow())).append("\"").append(LineEnd);
    int layers = 0;
    for (int i = 0; i < model.SoundingCount; ++i) {
        const SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        if (!isLeftOut(model.control, record)) {
            appendSounding(out, record);
            layers += record.NumLayer;
        }
    }
    return layers;
}

int M1D_File_Write(const SurveyModel &model, const std::string &path) {
    std::string reason;
    try {
        std::string text;
        const int layers = appendModelFile(model, text);
        const bool safe = layers > 0 || !holdsLayers(path) || keepOldFile(path, reason);
        if (!safe || !writeWholeFile(path, text, reason)) {
            reportWriteFailure(path, reason);
        }
    } catch (const std::bad_alloc &) {
        reportWriteFailure(path, "out of memory");
    }
    return 0;
}

} // namespace keldrin
