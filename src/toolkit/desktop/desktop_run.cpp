#include "toolkit/desktop/desktop_run.h"

#include "base/version.h"
#include "toolkit/desktop/desktop_backend.h"
#include "toolkit/desktop/driver/driven_backend.h"
#include "toolkit/scripted/scripted_run.h"

#include <QApplication>
#include <QIcon>

#include <locale.h> // NOLINT: the C++ header does not declare setlocale in the global namespace

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace keldrin {

namespace {

/// The name of the desktop entry, by which the desktop knows the window.
constexpr auto DesktopId = "internal.keldrin.keldrin";

/// Qt keeps the count and the words of its command line by reference.
struct DesktopRun {
    std::string name = "keldrin";
    std::array<char *, 2> words = {name.data(), nullptr};
    int count = 1;
    std::unique_ptr<QApplication> application;
    std::unique_ptr<DesktopBackend> backend;
};

DesktopRun &desktopRun() {
    static DesktopRun run;
    return run;
}

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        icon.addFile(QString(":/icons/keldrin-%1.png").arg(size));
    }
    return icon;
}

constexpr int ExitNoDisplay = 2;

// While the application starts: a display that cannot be opened gives one line instead of the
// window system's own and an abort.
void printStart(QtMsgType type, const QMessageLogContext & /*context*/, const QString &message) {
    if (type == QtFatalMsg) {
        const QByteArray display = qgetenv("DISPLAY");
        std::fprintf(stderr,
                     "keldrin: the display%s%s cannot be opened; keldrin-batch works "
                     "without one\n",
                     display.isEmpty() ? "" : " ", display.constData());
        std::_Exit(ExitNoDisplay);
    }
    const bool aboutDisplay =
        message.contains("could not connect to display") ||
        message.contains("could not load the Qt platform plugin", Qt::CaseInsensitive);
    if (!aboutDisplay) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

void startApplication() {
    DesktopRun &run = desktopRun();
    const QtMessageHandler before = qInstallMessageHandler(printStart);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QGuiApplication::setDesktopFileName(DesktopId);
    run.application = std::make_unique<QApplication>(run.count, run.words.data());
    qInstallMessageHandler(before);
    QApplication::setApplicationName("keldrin");
    QApplication::setApplicationDisplayName(""); // titles are the program's own
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(programIcon());
    setlocale(LC_NUMERIC, "C"); // Qt has taken the user's
}

} // namespace

bool hasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    constexpr std::array variables = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::any_of(variables.begin(), variables.end(),
                       [](const char *name) { return !qEnvironmentVariableIsEmpty(name); });
#else
    return true;
#endif
}

void startDesktop(std::vector<std::string> arguments) {
    startApplication();
    DesktopRun &run = desktopRun();
    run.backend = std::make_unique<DesktopBackend>(DesktopSettings{});
    run.backend->onStopped = [] {
        desktopRun().application.reset();
    };
    ToolkitInit(*run.backend, std::move(arguments));
}

int startDrivenRun(const std::string &scenarioPath, std::vector<std::string> arguments,
                   std::ostream &transcript, std::ostream &complaints) {
    const MakeScripted makeDriven = [](Script script, std::ostream &out) {
        startApplication();
        auto driven = std::make_unique<DrivenBackend>(std::move(script), out);
        driven->onStopped = [] {
            desktopRun().application.reset();
        };
        return driven;
    };
    return startScriptedRun(scenarioPath, std::move(arguments), transcript, complaints, makeDriven);
}

} // namespace keldrin
