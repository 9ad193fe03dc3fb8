#include "projectfile/model_file.h"

#include "base/clock.h"
#include "base/safe_writer.h"
#include "projectfile/file_content.h"
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
    for (std::size_t layer = 0; layer < layerCount(record); ++layer) {
        loadElementFields(ModelColumns, record, layer, values);
        values[ModelZinv] = static_cast<double>(base - record.ThkInv[layer] / 2.0F);
        base -= record.ThkInv[layer];
        appendTableRow(out, ModelColumns, values);
    }
}

/// Composes the whole file and counts what it holds.
FileContent composeModels(const SurveyModel &model, std::string &out) {
    appendLabelLine(out, ModelColumns);
    out.append("\"").append(writerStamp(clockNow())).append("\"").append(LineEnd);
    FileContent content;
    for (const SoundingRecord &record : model.soundings()) {
        if (!isLeftOut(model.control, record)) {
            appendSounding(out, record);
            content.rows += 1 + record.NumLayer;
            content.soundings += record.NumLayer > 0 ? 1 : 0;
        }
    }
    return content;
}

} // namespace

FileWrite prepareModels(SurveyModel &model, const std::string &path) {
    FileWrite file;
    file.path = path;
    file.content = composeModels(model, file.text);
    file.source = &model.source.models;
    file.examine = modelContent;
    return file;
}

WriteOutcome M1D_File_Write(SurveyModel &model, const std::string &path) {
    try {
        const FileWrite file = prepareModels(model, path);
        return replaceFiles({&file, 1});
    } catch (const std::bad_alloc &) {
        reportWriteFailure(path, "out of memory");
        return {.failure = "out of memory"};
    }
}

} // namespace keldrin
