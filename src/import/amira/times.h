#pragma once

#include "import/amira/record.h"

#include <string>
#include <string_view>

namespace keldrin {

// Times of channels: lists in keywords of the data file, and channel files (*.chn) beside it:
//
//   line of at most 80 bytes; the first one, a title, is ignored; at most 256 lines
//   \ !          comment
//   / : =        keywords, as in the data file
//   a letter     labels: DELAY and WIDTH, in one of the first two columns
//   else         a row, below labels: centre and width of the next channel, msec; a row whose
//                centre cannot be read is a channel without a time, a line of dashes is ignored

/// Reads a keyword list. The keyword gives the unit, (US) or (MS), else seconds, and what the
/// values are: START and END of windows, their WIDTH, else their centres. Lists of START and END
/// give the widths where no list does. A list can lower the count of channels, never raise it.
/// returns  0, or 1 when the list is empty or a value is out of 0 to 1.0E7; it is then not taken
///          (reported)
int AMR_Read_Times(const RecordLine &where, std::string_view keyword, std::string_view value,
                   ChannelTimes &times);

/// Channels that the keyword lists alone have times for: the list of centres, else those of starts
/// and ends.
int listedChannels(const ChannelTimes &times);

/// The channel file that a data file means: the one that its keyword names, as written or beside
/// the data file; without the keyword the one of its own name.
/// path     out: the file, or where it was expected
/// returns  true when it exists
bool findChannelFile(const std::string &dataFile, std::string_view named, std::string &path);

/// Reads a channel file: its times become those of the record, its keywords count too. A file
/// without a row is reported and leaves no channel.
/// returns  0, 1 without a row, 2 or more when a keyword stops the import
int AMR_Read_Channel_File(const std::string &path, AmiraRecord &record);

/// True when the file gives the time of a channel, from 0.
bool hasTime(const ChannelTimes &times, int channel);

/// The time of a channel that counts from the end of the ramp: the geometric centre where both ends
/// of the window are above 0.
/// channel  from 0
/// offset   added to the times of the file, msec
/// returns  msec; not above 0 when the channel has no usable time
float channelTime(const ChannelTimes &times, int channel, float offset);

} // namespace keldrin
