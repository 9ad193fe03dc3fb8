#pragma once

#include "page/surfaces/record_surface.h"

#include <string>
#include <vector>

namespace keldrin {

// A recorded page as lines of a transcript. Places are page centimetres with two decimals;
// colours are names in capitals; quotes and backslashes of a text stand after a backslash, and
// control characters in it are shown as blanks, so that each thing stays one line.
//
//   text X Y SIZE DEG COLOUR "..."       SIZE is the character height, DEG whole degrees
//   line COLOUR N X1 Y1 .. XN YN
//   poly COLOUR N X1 Y1 .. XN YN         closed
//   area COLOUR N X1 Y1 .. XN YN         filled, without an outline
//   mark plus|dot|ring COLOUR X Y

/// One line for each thing on the page, in the order of drawing.
std::vector<std::string> pageTranscript(const RecordSurface &page);

/// "KIND texts=T lines=L points=P markers plus=A dot=B red=R blue=S black=K": lines count polygons
/// too, points are the corners of both, the colours are those of the markers. A page with filled
/// areas ends in " areas=F", and gives their corners nowhere; rings are counted as dots.
std::string pageSummary(const RecordSurface &page);

} // namespace keldrin
