#pragma once

#include "scratch_file.h"

#include "conditioning/data_cutoff.h"
#include "conditioning/duplicates.h"
#include "conditioning/window_widths.h"
#include "import/import_steps.h"
#include "import/station_file.h"
#include "import/survey_information.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"
#include "shell/sounding_positions.h"
#include "text/enumeration.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

namespace keldrin::fuzz {

// One input of the readers of field data: the data file and, each after a line that names it, the
// files beside it: "%%mde", "%%stn", "%%chn".

inline constexpr std::array<std::string_view, 3> SideFiles = {".mde", ".stn", ".chn"};

/// The two passes over a file, as the import makes them.
struct FieldReader {
    std::string_view extension;
    int (*countPass)(SurveyModel &, const std::string &) = nullptr;
    int (*readPass)(SurveyModel &, const std::string &, std::string_view lineLabel) = nullptr;
    void (*requireUsable)(const SoundingRecord &) = nullptr; ///< ends the program when it is not
};

inline void requireUsableWindows(const SoundingRecord &record) {
    require(record.NumTW >= 1 && record.NumTW <= MaxWindows);
    for (std::size_t w = 0; w < static_cast<std::size_t>(record.NumTW); ++w) {
        require(record.TWcenter[w] > 0.0F && std::isfinite(record.TEMobs[w]));
    }
}

/// Puts the parts of an input into files. Returns the path of the data file.
inline std::string storeSurvey(std::string_view packed, std::string_view extension) {
    std::string data = scratchPath(extension);
    clearScratch();
    std::size_t begin = 0;
    std::string file = data;
    while (begin != std::string_view::npos) {
        std::size_t end = std::string_view::npos;
        std::string next;
        for (const std::string_view side : SideFiles) { // the mark that comes first
            const std::string mark = "\n%%" + std::string(side.substr(1)) + "\n";
            if (const std::size_t at = packed.find(mark, begin); at < end) {
                end = at;
                next = scratchPath(side);
            }
        }
        store(file, packed.substr(begin, end == std::string_view::npos ? end : end - begin));
        constexpr std::size_t lengthOfMark = 7;
        begin = end == std::string_view::npos ? end : end + lengthOfMark;
        file = next;
    }
    return data;
}

inline int readBothPasses(SurveyModel &model, const FieldReader &reader, const std::string &path) {
    if (reader.countPass(model, path) != 0) {
        return 1;
    }
    const LineEntry entry = model.lines.entries[0];
    model.preset.SelectedArrayIndex = entry.ArrayIndex;
    const int counted = soundingsNeeded(entry);
    static_cast<void>(STD_Allocate_hTrn(model, counted));
    const int status = reader.readPass(model, path, entry.LineLabel.view());
    require(model.SoundingCount <= counted && (status != 0 || model.SoundingCount > 0));
    return status;
}

inline void conditionAndPlace(SurveyModel &model) {
    AverageDuplicateTransients(model);
    SetWindowWidths(model);
    StationTable stations;
    if (Stn_File_Input(scratchPath(".stn"), stations) != 0 || stations.size() == 0) {
        stations = tableFromSoundings(model);
    }
    positionSoundings(model, stations);
    ApplyDataCutoff(model);
}

/// Reads an input as the import does, and the project that comes of it once more.
inline void importAndKeep(std::string_view packed, const FieldReader &reader) {
    messageLog() = MessageLog{};
    messageLog().quiet = true;
    enumerationMemo() = EnumerationMemo{};
    const std::string path = storeSurvey(packed, reader.extension);
    SurveyModel model;
    MD_Init(model.metadata, true);
    STD_Init_Namelist(model);
    Mde_File_Input(model, scratchPath(".mde"));
    if (readBothPasses(model, reader, path) != 0) {
        return;
    }
    for (const SoundingRecord &record : model.soundings()) {
        reader.requireUsable(record);
    }
    conditionAndPlace(model);
    std::string project = scratchPath(".std");
    static_cast<void>(STD_File_Write(model, project));
    SurveyModel again;
    const int status = STD_File_Read(again, project);
    for (const SoundingRecord &record : model.soundings()) {
        require(isLeftOut(model.control, record) || (status == 0 && again.SoundingCount > 0));
    }
}

} // namespace keldrin::fuzz
