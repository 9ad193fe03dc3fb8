#include "program/export_command.h"

#include "page/hardcopy.h"
#include "program/batch/plot_projects.h"
#include "toolkit/desktop/documents.h"

#include <QGuiApplication>

#include <array>
#include <cstdio>
#include <string_view>
#include <vector>

namespace keldrin {

namespace {

/// Has the plot files that the window system draws, and no user.
class ExportBackend : public AnsweringBackend {
  public:
    std::unique_ptr<DocumentSurface> document(int driver) override {
        return desktopDocument(driver);
    }
};

constexpr std::array Formats = {PlotFormat{"png", ".png", DriverPng},
                                PlotFormat{"pdf", ".pdf", DriverPdf},
                                PlotFormat{"svg", ".svg", DriverSvg},
                                PlotFormat{"hpgl", ".hpg", DriverHpgl},
                                PlotFormat{"wmf", ".wmf", DriverMetafile},
                                PlotFormat{"report", "_report.pdf", DriverPdf, true}};

// Remarks on the user's session, such as a missing directory of it, are no matter of plots.
void printFailuresOnly(QtMsgType type, const QMessageLogContext & /*context*/,
                       const QString &text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    }
}

} // namespace

int exportCommand(int argc, char **argv) {
    qInstallMessageHandler(printFailuresOnly);
    qputenv("QT_QPA_PLATFORM", "offscreen"); // letters are drawn without a display too
    const std::vector<std::string_view> words(argv + 1, argv + argc); // Qt would take --style
    const QGuiApplication application(argc, argv);
    ExportBackend backend;
    return plotProjects({"keldrin --export", {"--export", Formats}, backend}, words);
}

} // namespace keldrin
