#pragma once

#include "model/source_file.h"
#include "projectfile/table_file.h"

#include <string>

namespace keldrin {

// How much a project or model file holds, and whether it is whole. The readers count while they
// read; a file that is only to be compared is looked at without a message.

/// What a project file holds: soundings and windows. Nothing where there is no file; one that
/// cannot be read is not whole.
FileContent projectContent(const std::string &path);

/// What a model file holds: soundings with layers, and rows. As projectContent().
FileContent modelContent(const std::string &path);

/// True when `now` holds fewer soundings or rows than `before`.
inline bool holdsLess(const FileContent &now, const FileContent &before) {
    return now.soundings < before.soundings || now.rows < before.rows;
}

/// What distinguishes one sounding from another in a file.
struct StationKeys {
    double Station = MissingValue;
    double RxStn = MissingValue;
    double TxStn = MissingValue;
};

inline bool sameKeys(const StationKeys &a, const StationKeys &b) {
    return sameFileStation(a.Station, b.Station) && sameFileStation(a.RxStn, b.RxStn) &&
           sameFileStation(a.TxStn, b.TxStn);
}

/// Counts the blocks of rows of a table; one begins where the keys change. In a model file a block
/// has one row more than layers.
class BlockCount {
  public:
    void add(const StationKeys &keys);

    [[nodiscard]] int blocks() const { return blocks_; }
    [[nodiscard]] int withLayers() const { return withLayers_ + (rows_ > 1 ? 1 : 0); }

    /// True when the last block has layers, and fewer than those before it, which are two or more
    /// and all have as many.
    [[nodiscard]] bool lastIsShort() const;

  private:
    StationKeys keys_;
    int blocks_ = 0;
    int rows_ = 0;         ///< of the last block
    int withLayers_ = 0;   ///< of the blocks before it
    int usualRows_ = 0;    ///< of those with layers
    bool allAlike_ = true; ///< those with layers have as many rows
};

/// Counts the soundings of the rest of a project's table.
void countSoundings(TableScan &scan, const ControlValues &control, BlockCount &soundings);

/// Counts the sounding of a row whose stations are settled.
void countSounding(const RowValues &values, BlockCount &soundings);

/// True when a project that was scanned to its end is whole.
/// content  its counts
bool isWholeProject(const TableScan &scan, const ControlValues &control,
                    const FileContent &content);

/// Fills the stations that a row of a project may leave open.
void settleStations(const ControlValues &control, RowValues &values);

} // namespace keldrin
