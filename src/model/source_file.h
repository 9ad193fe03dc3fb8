#pragma once

#include <cstdint>
#include <string>

namespace keldrin {

/// What a project or model file holds.
struct FileContent {
    int soundings = 0; ///< of a model file those with layers
    int rows = 0;      ///< data rows: windows of a project, surfaces and layers of a model file
    int announced = 0; ///< soundings by the project's own NumStn; 0 it names none
    bool whole = true; ///< nothing of it was cut off or could not be read
};

/// A file in the state in which it was read or written last, so that a write can see whether it
/// replaces that state of that file or something else.
struct SourceFile {
    std::string path;          ///< links followed; blank: no file
    std::uintmax_t bytes = 0;  ///< its size
    std::int64_t modified = 0; ///< time of its last change, in ticks of the file system's clock
    FileContent content = {};
};

/// Where the model in memory comes from. Readers and writers keep it; a new model comes from
/// nowhere.
struct ModelSource {
    SourceFile project;
    SourceFile models; ///< blank when no model file was read or written
};

} // namespace keldrin
