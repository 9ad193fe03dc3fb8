#include "program/rkeldrin/engine_help.h"

#include <array>

namespace keldrin {

namespace {

constexpr std::array Usage = {
    HelpEntry{
        "rkeldrin [--forward] [--fresh] [--threads N] [--quiet] PROJECT",
        "Inverts the soundings of a project (*.std) to smooth layered models. The project gets "
        "calculated data and apparent resistivities; every other byte of it stays. The "
        "models are in the model file (*.m1d) beside it. Where there is one already, the run "
        "goes on from its models. Both files are written at the end, or neither."},
    HelpEntry{"rkeldrin --help[=CHAPTER] | --version",
              "Prints this text, or a chapter of the manual; --help=list names the chapters."},
};

constexpr std::array Options = {
    HelpEntry{"--forward", "Computes the response of the models in the model file, or of the "
                           "background where there is none, and changes no model. A project with "
                           "Niteration=0 asks for the same."},
    HelpEntry{"--fresh", "Starts as if there were no model file, which is then replaced."},
    HelpEntry{"--threads N", "Works on N threads, 1 to 256. Without it on as many as the machine "
                             "has processors. The result is the same for any number."},
    HelpEntry{"--quiet", "Says nothing on standard output."},
};

constexpr std::array Control = {
    HelpEntry{"Niteration", "Most iterations. Fewer are made when the models stand still."},
    HelpEntry{"ErrorFloor, DataCutoff",
              "Smallest error of a window in percent, and the error from which on a window is left "
              "out. Windows that are marked as skipped are left out too. A sounding that states "
              "the same error for all windows has not measured it: where its data scatter more, "
              "their noise is estimated from neighbouring windows and soundings."},
    HelpEntry{"dzWeight, dzzWeight", "Smoothness of each model with depth: its first and second "
                                     "derivative."},
    HelpEntry{"dxWeight", "Likeness of neighbouring models at the same depth."},
    HelpEntry{"dpWeight", "Likeness of a model and the background."},
    HelpEntry{"Res0Layer, Thk0Layer, Res0Error",
              "The background. Without it the best half-space of each sounding, with an error of "
              "500 percent."},
};

constexpr std::array Columns = {
    HelpEntry{"Zinv", "Elevation of the layer's middle. The first row of a sounding is its "
                      "surface."},
    HelpEntry{"ResInv", "Resistivity, ohm-m."},
    HelpEntry{"Res0, Rerr0", "Background and its error in percent, as used; read as input by the "
                             "next run."},
    HelpEntry{"dzW", "Smoothness weight of the layer, as used; read as input by the next run. A "
                     "small one lets the resistivity jump there."},
    HelpEntry{"Rerr", "Error of the resistivity in percent."},
    HelpEntry{"Rsns", "By how many standard deviations the data change when everything from this "
                      "layer down changes by a factor of 2.7. Where it is below 3 the data hardly "
                      "see the layer."},
};

constexpr std::array ExitCodes = {
    HelpEntry{"0", "The models are written, or calculated data alone, or there was nothing to "
                   "write; the last line says which."},
    HelpEntry{"1", "The project cannot be read, holds no sounding, or cannot be written; standard "
                   "error says why, and both files are as they were."},
    HelpEntry{"2", "The command line is wrong."},
    HelpEntry{"3", "The run was stopped by SIGTERM or SIGINT; both files are as they were."},
};

constexpr std::array Sections = {
    HelpSection{"options", Options}, HelpSection{"control values of the project", Control},
    HelpSection{"columns of the model file", Columns}, HelpSection{"exit codes", ExitCodes}};

constexpr std::array<std::string_view, 3> Placeholders = {"CHAPTER", "N", "PROJECT"};
constexpr std::array<std::string_view, 2> SeeAlso = {"keldrin", "keldrin-batch"};

constexpr ProgramHelp Help = {
    "rkeldrin",
    "smooth layered models of transient electromagnetic soundings",
    "Needs no display and asks nothing. All soundings of a line are fitted together, so that "
    "neighbouring models are alike where the data allow it.",
    Usage,
    Sections,
    Placeholders,
    SeeAlso,
};

} // namespace

const ProgramHelp &engineHelp() {
    return Help;
}

} // namespace keldrin
