#include "program/batch/command.h"

#include "page/hardcopy.h"
#include "program/batch/plot_projects.h"

#include <array>

namespace keldrin {

int plotCommand(CommandWords words) {
    constexpr std::array formats = {PlotFormat{"svg", ".svg", DriverSvg},
                                    PlotFormat{"hpgl", ".hpg", DriverHpgl},
                                    PlotFormat{"wmf", ".wmf", DriverMetafile}};
    AnsweringBackend backend;
    return plotProjects({"keldrin-batch plot", {"--format", formats}, backend}, words);
}

} // namespace keldrin
