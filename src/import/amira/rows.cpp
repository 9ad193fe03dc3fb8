#include "import/amira/rows.h"

#include "base/free_form.h"
#include "base/index.h"
#include "import/amira/times.h"
#include "messages/message_log.h"
#include "text/cell_report.h"
#include "text/value_readers.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace keldrin {

namespace {

// A number of the row over the value in force.
void takeNumber(AmiraReadPass &pass, AmiraVariable variable, std::string_view line, double &value) {
    const std::string_view cell = pass.walk.cell(variable);
    if (AMR_Number({pass.walk.number(), {}}, cell, value) == CellEmpty && !isEmptyCell(cell)) {
        pass.note(AmiraUnreadCells, line);
    }
}

void takeReal(const AmiraWalk &walk, AmiraVariable variable, std::string_view label,
              std::string_view line, float &value) {
    float read = 0.0F;
    if (walk.hasColumn(variable) &&
        Val_Read_R4({walk.number(), line}, walk.cell(variable), label, value, read) == CellRead) {
        value = read;
    }
}

struct Position {
    double east = MissingValue;
    double north = MissingValue;
    double elevation = MissingValue;
};

Position takeColumns(AmiraReadPass &pass, std::string_view line) {
    AmiraWalk &walk = pass.walk;
    AmiraRecord &record = walk.record;
    record.hasLoop = record.hasLoop || walk.hasColumn(AmiraLoop);
    takeNumber(pass, AmiraLoop, line, record.LoopNumber);
    Position position = {record.East, record.North, record.Elevation};
    takeNumber(pass, AmiraEast, line, position.east);
    takeNumber(pass, AmiraNorth, line, position.north);
    takeNumber(pass, AmiraElevation, line, position.elevation);
    takeReal(walk, AmiraTxLength, "LSide", line, record.XTxLength);
    takeReal(walk, AmiraCurrent, "TxAmp", line, record.Current);
    takeReal(walk, AmiraTurnOff, "TurnOff", line, record.TurnOff);
    return position;
}

// Channels of the row that have times; 0 leaves the row.
int channelsOfRow(AmiraReadPass &pass, std::string_view line) {
    const AmiraWalk &walk = pass.walk;
    const int first = walk.columns.iVarCol[AmiraChannel1];
    const int times = walk.record.times.NumChannels;
    if (times == 0) {
        return 0;
    }
    const int cells = static_cast<int>(walk.cells.cells.size()) - first + 1;
    int told = cells;
    if (walk.hasColumn(AmiraNumTimes)) {
        const int status =
            Val_Read_Int({walk.number(), line}, walk.cell(AmiraNumTimes), "NCH", cells, told);
        if (status > CellRead) {
            return 0;
        }
    }
    if (told != times || cells < told) {
        pass.note(AmiraOtherCount, line);
    }
    const int room = AmiraMaxColumns - first + 1;
    if (std::min(times, told) > room) {
        ReportError({"WARNING: Could not read all channels in:", line});
    }
    return std::max(0, std::min({times, told, room}));
}

/// Puts a coordinate of the row into its sounding. A later row without it takes nothing away.
void setCoordinate(double &target, double value, bool isNew) {
    if (isNew || isPresent(value)) {
        target = value;
    }
}

// The transmitter's station on the line, or a fixed loop's number.
double transmitterOfRow(AmiraReadPass &pass, ImportPreset &preset, double rx,
                        std::string_view line) {
    const AmiraRecord &record = pass.walk.record;
    if (record.arrayIndex == MovingLoop && !record.hasLoop) {
        const double tx = rx - static_cast<double>(record.XRxOffset); // see settleTxByOffset()
        if (record.hasXRxOffset) {
            preset.TxByOffset.insert({tx, rx});
        } else {
            pass.note(AmiraNoLoop, line);
        }
        return tx;
    }
    return record.arrayIndex > FixedLoop ? rescaledStation(preset, record.LoopNumber)
                                         : record.LoopNumber;
}

// Finds or adds the sounding of a row. Below 0 when there is no room for it (reported).
int soundingOfRow(AmiraReadPass &pass, SurveyModel &model, double tx, double rx,
                  const Position &position) {
    const AmiraRecord &record = pass.walk.record;
    int index = 0;
    const FindOrAdd found = findOrAddKeepingLast(model, tx, record.baseFrequency(), rx, index);
    if (found == FindOrAdd::Full) {
        ReportError({"AMR_Read_Data.ERROR",
                     "WARNING: More than " + std::to_string(model.SoundingCapacity()) +
                         " soundings in " + pass.walk.name,
                     "Data will be skipped after line " + std::to_string(pass.walk.number())});
        return -1;
    }
    SoundingRecord &sounding = model.hTrn[asIndex(index)];
    const bool isNew = found == FindOrAdd::Added;
    sounding.Station = rx;
    hTrn_Set_Stations(model, index, tx, rx);
    setCoordinate(sounding.East, position.east, isNew);
    setCoordinate(sounding.North, position.north, isNew);
    setCoordinate(sounding.Elevation, position.elevation, isNew);
    return index;
}

/// What makes nV/(A m2) of the values of a row.
struct Conversion {
    float factor = 1.0F;
    float divisor = 1.0F;
};

Conversion conversionOfRow(AmiraReadPass &pass, const ImportPreset &preset, int axis,
                           std::string_view line) {
    const AmiraRecord &record = pass.walk.record;
    if (record.unitIndex == AmiraMicrovolts) {
        return {1000.0F / preset.RxAreaXYZ[asIndex(axis)], 1.0F};
    }
    if (record.unitIndex != AmiraNanotesla) {
        return {};
    }
    if (isPresent(record.Current) && record.Current != 0.0F) {
        return {1.0F, record.Current};
    }
    if (!pass.noCurrentTold) {
        pass.noCurrentTold = true;
        ReportError({"AMIRA input ERROR: nT/sec without a current in:", line,
                     "The values are taken as per ampere."});
    }
    return {};
}

// Averages the channels of a row into its sounding. While rows are read, the windows of a sounding
// are the channels, also those without a value, so that a row that lacks one moves no other.
void storeChannels(AmiraReadPass &pass, SurveyModel &model, int sounding, int channels,
                   std::string_view line) {
    const AmiraWalk &walk = pass.walk;
    const ChannelTimes &times = walk.record.times;
    const int axis = std::min(walk.record.componentCode, ComponentAxes) - 1;
    const float offset = walk.record.InitDelay - walk.record.TurnOff;
    const Conversion unit = conversionOfRow(pass, model.preset, axis, line);
    SoundingRecord &record = model.hTrn[asIndex(sounding)];
    bool unread = false;
    for (int channel = 0; channel < channels; ++channel) {
        const float time = channelTime(times, channel, offset);
        const std::string_view cell =
            walk.cells.column(walk.columns.iVarCol[AmiraChannel1] + channel);
        if (isEmptyCell(cell)) {
            continue;
        }
        if (!(time > 0.0F)) {
            if (hasTime(times, channel)) { // else the channel was reported when its time was read
                pass.note(AmiraNoTime, line);
            }
            continue;
        }
        if (!isHoldableTime(time)) {
            pass.note(AmiraImpossible, line);
            continue;
        }
        float value = 0.0F;
        const bool read = readFreeForm(cell, value) == FreeForm::Value;
        value = value * unit.factor / unit.divisor;
        if (!read || !(std::fabs(value) <= LargestReading)) {
            unread = true;
            continue;
        }
        const std::size_t window = asIndex(channel);
        record.TWcenter[window] = time;
        record.TWwidth[window] = times.values[ChannelTimes::Width][window];
        if (record.TWwidth[window] > 0.0F && !isHoldableTime(record.TWwidth[window])) {
            pass.note(AmiraImpossibleWidth, line);
            record.TWwidth[window] = 0.0F;
        }
        record.NumTW = std::max(record.NumTW, channel + 1);
        averageReading(pass.tables.at(sounding, axis, channel), value);
    }
    if (unread) {
        pass.note(AmiraUnreadCells, line);
    }
}

bool isOfChosenLine(AmiraWalk &walk, std::string_view lineLabel, bool wasChosen) {
    if (!walk.identity.take(walk.record.Line.view(), amiraArrayName(walk.record.arrayIndex))) {
        return wasChosen;
    }
    return walk.identity.label() == lineLabel;
}

} // namespace

void AMR_Read_Row(AmiraReadPass &pass, SurveyModel &model, std::string_view lineLabel,
                  std::string_view line) {
    AmiraWalk &walk = pass.walk;
    walk.takeLineAndComponent(); // as the count pass does, whatever the station
    double station = MissingValue;
    if (AMR_Number({walk.number(), {}}, walk.cell(AmiraStation), station) != CellRead) {
        ReportError({"WARNING: Could not read station number in:", line});
        return;
    }
    pass.inChosenLine = isOfChosenLine(walk, lineLabel, pass.inChosenLine);
    if (!pass.inChosenLine) {
        return;
    }
    if (walk.record.componentCode < 1 || walk.record.componentCode > AmiraLastCode) {
        return; // told by the count pass
    }
    if (walk.record.arrayIndex > MovingLoop && walk.record.componentCode < ComponentAxes) {
        pass.note(AmiraUnusedComponent, line);
    }
    const Position position = takeColumns(pass, line);
    pass.chosen = walk.record;
    const int channels = channelsOfRow(pass, line);
    if (channels == 0) {
        return;
    }
    const double rx = rescaledStation(model.preset, station);
    const double tx = transmitterOfRow(pass, model.preset, rx, line);
    if (!isHoldableStation(rx) || !isHoldableStation(tx)) {
        pass.note(AmiraImpossible, line);
        return;
    }
    const int sounding = soundingOfRow(pass, model, tx, rx, position);
    pass.full = sounding < 0;
    if (!pass.full) {
        storeChannels(pass, model, sounding, channels, line);
    }
}

} // namespace keldrin
