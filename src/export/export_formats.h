#pragma once

#include "export/exported_line.h"

#include <string>
#include <vector>

namespace keldrin {

// The texts of the files of each format. The same line gives the same bytes, under any locale.

/// Three tables, UTF-8, with a header row each: keys first, then the values of soundings, windows
/// or layers. A missing value is an empty cell.
struct CsvTables {
    std::string soundings;
    std::string windows;
    std::string layers;
};
CsvTables csvTables(const ExportedLine &line);

/// Point located data after the standard ASEG-GDF2 (revision of 2003): rows of fixed columns, one
/// for each sounding, and their definition. Windows and layers are array fields as long as the
/// longest of the line. Where a value is missing or would fill its column its null stands.
struct Gdf2Files {
    std::string definition; ///< .dfn
    std::string data;       ///< .dat
};
Gdf2Files gdf2Files(const ExportedLine &line);

/// The first lines of every definition that this program writes.
std::string gdf2Beginning();

/// The models as a curtain of quads in real coordinates, a legacy VTK file (version 3.0, ASCII,
/// unstructured grid).
///
/// Each sounding is a column of its layers at their elevations, from half way to the sounding
/// before it on the line to half way to the one after it; the ends of the line reach as far to the
/// other side. Next to a gap wider than three times the median spacing a column ends at half that
/// spacing. A sounding alone is as wide as the transmitter loop. Soundings of one place lie upon
/// each other. An error or sensitivity that is missing is -1, a missing elevation counts as 0.
struct VtkCurtain {
    std::string text;
    int cells = 0;    ///< layers drawn; without any there is nothing to show
    int unplaced = 0; ///< soundings with a model but without East or North, which are left out
};
VtkCurtain vtkCurtain(const ExportedLine &line);

} // namespace keldrin
