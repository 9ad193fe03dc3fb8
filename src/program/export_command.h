#pragma once

namespace keldrin {

/// keldrin --export LIST [--soundings LIST] [--plan] [--all-in-one] [--out DIR] PROJECT...: pages
/// of soundings and the plan view as plot files of the kinds in the list, png, pdf, svg, hpgl or
/// wmf. Opens no window and needs no display. Takes the whole command line; returns the exit code.
int exportCommand(int argc, char **argv);

} // namespace keldrin
