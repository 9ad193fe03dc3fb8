#include "program/batch/batch_help.h"

#include "base/program_help.h"
#include "toolkit/scripted/exit_codes.h"

#include <array>

namespace keldrin {

namespace {

constexpr std::array Usage = {
    HelpEntry{"keldrin-batch build [--out DIR] [--line N|all] FILE...",
              "Makes a project (*.std) of each field data file (*.avg, *.z, *.amr, *.tem, *.dat), "
              "beside it or in DIR. Every question is answered by its default. Of a file with "
              "several lines the first is built, or line N, or all; the line's name is then added "
              "to the project's name. One line of output tells soundings, windows, skipped "
              "windows and warnings; messages are in BASE.log and BASE.err beside the project."},
    HelpEntry{"keldrin-batch invert [--threads N] [--jobs N] PROJECT...",
              "Inverts each project (*.std) by the engine rkeldrin. One line of output tells "
              "iterations, median misfit, soundings and seconds. --jobs N inverts N projects at a "
              "time, each on --threads N threads; without that the processors are shared. The exit "
              "code is 1 if any failed."},
    HelpEntry{
        "keldrin-batch export [--format csv,gdf2,vtk] [--out DIR] PROJECT...",
        "Writes each project (*.std) with its models for other programs, beside it or in DIR. "
        "csv, which is the default: BASE_soundings.csv, BASE_windows.csv and BASE_layers.csv, "
        "tables that can be joined by their first columns. gdf2: point located data "
        "(ASEG-GDF2) in BASE.dat with its definition in BASE.dfn; BASE_gdf2.dat where "
        "BASE.dat holds field data. vtk: the models as a curtain along the line in BASE.vtk. "
        "Skipped windows keep their data and have the flag 1. One line of output tells "
        "soundings, windows, layers and files. The exit code is 1 if any failed."},
    HelpEntry{
        "keldrin-batch plot [--format svg,hpgl,wmf] [--soundings LIST] [--style STYLE] "
        "[--plan] [--profile] [--section] [--out DIR] PROJECT...",
        "Plots the soundings of each project (*.std), beside it or in DIR, as BASE0001.svg "
        "and so on (.hpg for hpgl, .wmf for wmf). LIST is all, which is the default, or "
        "ordinals such as 1-5,9, or none. STYLE is standard, which is the default, or "
        "presentation: an axis for each quantity, misfits, errors of the model and depth of "
        "the data. --plan adds the map of the survey, "
        "BASE_plan.svg, --profile the windows along the line, BASE_profile.svg, and --section "
        "the section of the line, BASE_section.svg, which hpgl cannot show. Projects are not "
        "changed."},
    HelpEntry{"keldrin-batch skip [--first N] [--last N] [--error on|off] [--cutoff PERCENT] "
              "[--negative on|off] [--slope on|off] [--noise on|off] [--noise-level X] "
              "[--noise-exponent X] [--curvature on|off] [--bend X] [--neighbours on|off] "
              "[--factor X] [--later on|off] [--keep on|off] PROJECT...",
              "Flags windows of each project (*.std) by the rules of Auto Skip, in place of all "
              "earlier flags, and writes the project. Used are windows N to N, at first all. The "
              "error filter skips data after an error above PERCENT, without --cutoff above the "
              "project's DataCutoff; the negative filter skips negative data, the slope filter "
              "data after the transient slopes up; these are on at first, the others off. The "
              "noise filter skips data below --noise-level (0.1 nV/Am2) at 1 msec, which changes "
              "with time to the power --noise-exponent (-0.5); the curvature filter skips peaks "
              "and dips at which the slope of log dB/dt over log time changes by more than "
              "--bend (2); the neighbours filter skips data that differ by more than --factor "
              "(3) from the median of the four nearest soundings. --later skips all windows "
              "after a skipped one too, --keep leaves earlier flags as they are. One line of "
              "output tells "
              "how many windows each filter has taken; a window may be taken by several. The exit "
              "code is 1 if any failed."},
    HelpEntry{"keldrin-batch play [--record RECORD] SCENARIO [FILE]",
              "Runs the program on the lines of a scenario file, which say what a user does, and "
              "prints the transcript of what a user would have seen. --record writes what was done "
              "as another scenario."},
    HelpEntry{"keldrin-batch --help[=CHAPTER] | --version",
              "Prints this text, or a chapter of the manual; --help=list names the chapters."},
};

constexpr std::array Files = {
    HelpEntry{"BASE.avg, BASE.z", "Field data, one text line for each reading or window."},
    HelpEntry{"BASE.amr, BASE.tem, BASE.dat", "Field data as AMIRA text."},
    HelpEntry{"BASE.mde, BASE.stn, BASE.chn",
              "Survey information, station positions and channel times beside the data."},
    HelpEntry{"BASE.std, BASE.m1d", "A project and its layered models."},
    HelpEntry{"BASE_soundings.csv, BASE_windows.csv, BASE_layers.csv",
              "The line as tables; units stand in the names of the columns."},
    HelpEntry{"BASE.dfn, BASE.dat", "The line as point located data (ASEG-GDF2)."},
    HelpEntry{"BASE.vtk", "The models as a curtain, a legacy VTK unstructured grid."},
};

constexpr std::array Sections = {HelpSection{"files", Files}, ExitCodeSection};

constexpr std::array<std::string_view, 11> Placeholders = {
    "BASE", "CHAPTER", "DIR", "FILE", "LIST", "X", "N", "PROJECT", "RECORD", "SCENARIO", "STYLE"};
constexpr std::array<std::string_view, 2> SeeAlso = {"keldrin", "rkeldrin"};

constexpr ProgramHelp Help = {
    "keldrin-batch",
    "transient electromagnetic soundings without a display",
    "",
    Usage,
    Sections,
    Placeholders,
    SeeAlso,
};

} // namespace

const ProgramHelp &batchHelp() {
    return Help;
}

} // namespace keldrin
