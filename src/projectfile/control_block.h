#pragma once

#include "base/line_reader.h"
#include "model/survey_model.h"

#include <string>

namespace keldrin {

// The head of a project file: one comment line and the group of control values, see
// control_group.h for its syntax and control_table.h for its names.

/// Reads the group on an open file and brings every value into its range; the next line of the
/// reader is then the label line of the data table.
/// path     for messages
/// changes  all control values, defaults where the file names none; MaxTW, ModelLayerCount and
///          TimeRatio become 0; the content of the model's source gets what the file announces
/// returns  0, or 1 on a fault in the group or its missing end; reported
[[nodiscard]] int STD_Namelist_Read(SurveyModel &model, LineReader &reader,
                                    const std::string &path);

/// Appends the comment line and the group to a text.
/// Texts are not escaped and azimuths lose their fraction. A waveform of 2 or 3 points is not
/// written. NumStn is the count of all soundings held.
/// changes  ProgramVersion becomes this program's, NumTW the window count of the first sounding
void STD_Namelist_Write(SurveyModel &model, std::string &out);

/// Limits TxFreq (Hz) and TxRamp (usec) and checks the transmitter waveform. Without two points, or
/// with points out of order, after the time origin or above full current, the default shape of
/// TxFreq and TxRamp replaces it. A ramp longer than a quarter period is only warned of. Every
/// fault but a missing waveform is reported.
void STD_Check_TxWaveform(ControlValues &control);

/// Sets the default waveform of a frequency (Hz) and a ramp (usec): full positive current for a
/// quarter period, then off. It rises twice as long as it falls.
void setDefaultTxWaveform(ControlValues &control);

/// Moves metadata that is present into the control values; absent metadata leaves them alone.
void Control_From_Metadata(SurveyModel &model);

} // namespace keldrin
