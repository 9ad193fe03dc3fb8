#include "program/desktop_help.h"

#include "base/program_help.h"
#include "shell/window_keys.h"
#include "toolkit/scripted/exit_codes.h"

#include <array>

namespace keldrin {

namespace {

constexpr std::string_view Description =
    "Makes inversion projects of transient electromagnetic (TEM) field data, shows and edits them, "
    "and has them inverted to smooth layered models by the engine rkeldrin, a program of its own.";

constexpr std::array Usage = {
    HelpEntry{"keldrin [FILE]",
              "Opens the window. FILE is a project (*.std), shown with the layered models (*.m1d) "
              "beside it, or field data (*.avg, *.z, *.amr, *.tem, *.dat), of which a project is "
              "made. A name without a point receives .std. Without FILE the program asks for one."},
    HelpEntry{"keldrin --export FORMATS [--soundings LIST] [--style STYLE] [--plan] [--profile] "
              "[--section] [--all-in-one] [--out DIR] PROJECT...",
              "Writes the plots of the soundings of each project (*.std), beside it or in DIR, as "
              "BASE0001.png and so on. Opens no window and needs no display. Projects are not "
              "changed."},
    HelpEntry{"keldrin --drive SCENARIO [FILE]",
              "Does in the window what the lines of a scenario file say that a user does, and "
              "prints the transcript of what the user has seen."},
    HelpEntry{"keldrin --record RECORD [FILE]",
              "Opens the window and writes what the user does in it as a scenario, which --drive "
              "plays."},
    HelpEntry{"keldrin --help[=CHAPTER] | --version",
              "Prints this text, or a chapter of the manual; --help=list names the chapters."},
};

constexpr std::array Options = {
    HelpEntry{
        "--export FORMATS",
        "Kinds of the plot files, with commas between them: png, pdf, svg, hpgl (.hpg), wmf."},
    HelpEntry{"--export report",
              "One PDF of the whole survey, BASE_report.pdf: a title page, plan, profiles, section "
              "and all soundings, with bookmarks and page numbers."},
    HelpEntry{"--soundings LIST",
              "Soundings to plot: all, which is the default, or ordinals such as 1-5,9, or none."},
    HelpEntry{
        "--style STYLE",
        "Style of the soundings' pages: standard, which is the default, or presentation, with "
        "an axis for each quantity, misfits, errors of the model and depth of the data."},
    HelpEntry{"--plan", "Plot the map of the survey too, as BASE_plan.png."},
    HelpEntry{"--profile", "Plot dB/dt of windows along the line too, as BASE_profile.png."},
    HelpEntry{"--section",
              "Plot the section too, as BASE_section.png: apparent resistivities, models and their "
              "misfit along the line. hpgl cannot show it."},
    HelpEntry{"--all-in-one", "Put all pages of a project into one PDF, BASE.pdf."},
    HelpEntry{"--out DIR", "Directory of the plot files; it is made if need be."},
    HelpEntry{"--drive SCENARIO", "Play a scenario in the window."},
    HelpEntry{"--record RECORD",
              "Write what the user does as a scenario. Record in the menu of the right button does "
              "so from any moment on, into BASE.scn beside the project; a file of that name is "
              "kept as BASE.scn~."},
    HelpEntry{"--help, -h", "Print this text."},
    HelpEntry{"--version", "Print the version."},
};

constexpr std::array Files = {
    HelpEntry{"BASE.std", "Project: control values, then the windows of all soundings."},
    HelpEntry{"BASE.std~", "The project as it was before one without data replaced it."},
    HelpEntry{"BASE.m1d", "Layered models of the project."},
    HelpEntry{"BASE.mde, BASE.stn, BASE.chn",
              "Survey information, station positions and channel times beside field data."},
    HelpEntry{"keldrin.log, keldrin.err",
              "What the program did, and what it warned of: in the working directory or, where "
              "that cannot be written, in $XDG_STATE_HOME/keldrin or ~/.local/state/keldrin. Both "
              "are begun anew at each start."},
    HelpEntry{"~/.config/keldrin/keldrin.ini",
              "What the program remembers: the size of its window and the files opened lately."},
    HelpEntry{"rkeldrin",
              "The inversion engine, looked for on the search path, then beside the program."},
};

constexpr std::array Sections = {
    HelpSection{"options", Options}, KeySections[0], KeySections[1], KeySections[2], KeySections[3],
    HelpSection{"files", Files},     ExitCodeSection};

constexpr std::array<std::string_view, 10> Placeholders = {
    "BASE", "CHAPTER", "DIR", "FILE", "FORMATS", "LIST", "PROJECT", "RECORD", "SCENARIO", "STYLE"};
constexpr std::array<std::string_view, 1> SeeAlso = {"keldrin-batch"};

constexpr ProgramHelp Help = {
    "keldrin",   "1D smooth-model inversion of transient electromagnetic soundings",
    Description, Usage,
    Sections,    Placeholders,
    SeeAlso,
};

} // namespace

std::optional<int> answerDesktopHelp(std::string_view first) {
    return answerHelp(Help, {&first, 1});
}

} // namespace keldrin
