#include "page/drawing.h"
#include "toolkit/control_ids.h"
#include "toolkit/file_filter.h"
#include "toolkit/menu.h"
#include "toolkit/sample_dialogs.h"
#include "toolkit/sample_menu.h"
#include "toolkit/scripted/headless_backend.h"
#include "toolkit/toolkit_state.h"

#include <gtest/gtest.h>

#include <string>

namespace keldrin {
namespace {

/// Gives the answers that a test has set, and keeps what was asked.
class ToldBackend : public HeadlessBackend {
  public:
    ToldBackend() {
        ToolkitInit(*this, {"keldrin", "line1.avg"});
        WindowOpen(ResizableWindow, -1, -1, 1000, 800);
    }
    ~ToldBackend() override { ToolkitClose(); }

    std::optional<std::string> path;
    BoxResult box;
    RunResult runResult;
    RubberEnd rubber;
    FileRequest fileAsked;
    std::vector<std::string> linesAsked;
    int boxes = 0;

    int stop() override { return 42; }
    RawEvent wait() override { return {EventExposure, 0, 0, 0.0, 0.0}; }
    int runModal(DialogModel & /*dialog*/) override { return 0; }
    std::optional<std::string> chooseFile(const FileRequest &request) override {
        fileAsked = request;
        return path;
    }
    BoxResult messageBox(const BoxRequest &request) override {
        ++boxes;
        linesAsked = request.lines;
        return box;
    }
    RunResult run(const std::vector<std::string> & /*command*/,
                  const ChildWatch & /*watch*/) override {
        return runResult;
    }
    RubberEnd rubberBand(double pageX, double pageY) override {
        EXPECT_DOUBLE_EQ(pageX, 0.25);
        EXPECT_DOUBLE_EQ(pageY, 0.5);
        return rubber;
    }
    std::unique_ptr<Surface> printer(PrinterPage & /*page*/) override { return nullptr; }
};

TEST(ToolkitAlone, EveryCallIsHarmless) {
    toolkitState() = ToolkitState{};
    std::string path = "kept.std";
    ToolkitEvent event;
    float x = 1.0F;
    float y = 2.0F;
    int end = 0;
    WindowOpen(ResizableWindow, -1, -1, 10, 10);
    WindowTitle("title");
    WMenuSetState(Command::Edit, MenuEntryEnabled, 1);
    ToolkitFlush();
    ToolkitTrace("info", "text");
    WGrInput(RubberRectangle, x, y, end);
    EXPECT_EQ(end, EventClose);
    EXPECT_FALSE(ToolkitHasSurface());
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "a\rb", "ERROR"), BoxOk);
    EXPECT_FALSE(ToolkitFileChooser("d|*.std|", ChooseExisting, path, "t"));
    EXPECT_EQ(path, "kept.std");
    EXPECT_FALSE(ToolkitPeekEvent(event));
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventClose);
    EXPECT_EQ(ToolkitArgumentCount(), 0);
    WDialogLoad(SampleAreas);
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    EXPECT_EQ(ToolkitDialogInfo(DialogEndButton), ButtonContinue);
    WDialogUnload();
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    IOsCommand({"rkeldrin", "a.std"}, 2);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorCannotRun);
    EXPECT_EQ(ToolkitClose(), 0);
}

TEST(ToolkitErrors, ReadingClearsAndFaultsCountEveryRead) {
    toolkitState() = ToolkitState{};
    ToolkitSetError(ErrorNoSuchControl);
    EXPECT_EQ(ToolkitErrorState(ErrorOfSystem), 0);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorNoSuchControl);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_FALSE(ToolkitErrorText(ErrorNoSuchControl).empty());

    WDialogLoad(SampleAzimuths);
    WDialogPutInteger(1048, 30);
    injectFault(77, "out of colour", 2);
    int azimuth = 5;
    EXPECT_FALSE(WDialogGetInteger(1048, azimuth)) << "the reading of a field is a read too";
    EXPECT_EQ(azimuth, 5);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 77);
    EXPECT_EQ(ToolkitErrorText(77), "out of colour");
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0);
    EXPECT_TRUE(WDialogGetInteger(1048, azimuth));
    EXPECT_EQ(azimuth, 30);
    toolkitState() = ToolkitState{};
}

TEST(ToolkitFiles, FilterAndExtensionOfASave) {
    const FileFilter filter = parseFileFilter("TEM data file| *.avg;*.z ;;*.tem|   ");
    EXPECT_EQ(filter.description, "TEM data file");
    EXPECT_EQ(filter.patterns, (std::vector<std::string>{"*.avg", "*.z", "*.tem"}));
    EXPECT_TRUE(parseFileFilter("").patterns.empty());
    EXPECT_EQ(parseFileFilter("d|*.x").patterns, std::vector<std::string>{"*.x"});

    const std::string save = "Save std file|*.std|            ";
    EXPECT_EQ(withFilterExtension("line1", save), "line1.std");
    EXPECT_EQ(withFilterExtension("line.1", save), "line.1");
    EXPECT_EQ(withFilterExtension("survey.v2/line1", save), "survey.v2/line1.std");
    EXPECT_EQ(withFilterExtension("survey.v2\\line1", save), "survey.v2\\line1.std");
    EXPECT_EQ(withFilterExtension("", save), "");
    EXPECT_EQ(withFilterExtension("dir/", save), "dir/");
    EXPECT_EQ(withFilterExtension("line1", "All|*|"), "line1");

    ToldBackend backend;
    std::string path = "old.std";
    EXPECT_FALSE(ToolkitFileChooser(save, 11, path, "Save"));
    EXPECT_EQ(path, "old.std");
    EXPECT_EQ(ToolkitDialogInfo(CommonDialogOk), 0);
    EXPECT_EQ(backend.fileAsked.path, "old.std");
    EXPECT_EQ(backend.fileAsked.filter, "Save std file|*.std|");
    backend.path = "new";
    EXPECT_TRUE(ToolkitFileChooser(save, 11, path, "Save"));
    EXPECT_EQ(path, "new.std");
    EXPECT_TRUE(ToolkitFileChooser("Open|*.std|", ChooseExisting, path, "Open"));
    EXPECT_EQ(path, "new") << "an opened name is the user's";
    EXPECT_NE(ToolkitDialogInfo(CommonDialogOk), 0);
}

TEST(ToolkitBoxes, QuietLastsToTheNextCommand) {
    ToldBackend backend;
    backend.box = {1, true};
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "one\rtwo", "ERROR"), BoxOk);
    EXPECT_EQ(backend.linesAsked, (std::vector<std::string>{"one", "two"}));
    backend.box = {0, false};
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "three", "ERROR"), BoxOk);
    EXPECT_EQ(backend.boxes, 1);
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "data lost", "ERROR",
                          BoxDuty::AlwaysShown),
              BoxCancel);
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "still quiet", "ERROR"), BoxOk);
    EXPECT_EQ(backend.boxes, 2);
    ToolkitEvent event;
    queueEvent({EventKey, 'x', 0, 0.0, 0.0});
    ToolkitNextEvent(event);
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "four", "ERROR"), BoxOk)
        << "a key begins no command";
    queueEvent({EventMenu, Command::New, 0, 0.0, 0.0});
    ToolkitNextEvent(event);
    EXPECT_EQ(WMessageBox(BoxOkAndCancel, BoxErrorIcon, BoxOk, "five", "ERROR"), BoxCancel);
}

TEST(ToolkitRun, FailuresAndARememberedClose) {
    ToldBackend backend;
    backend.runResult.toolkitError = ErrorCannotRun;
    backend.runResult.systemError = 2;
    IOsCommand({"rkeldrin", "a.std"}, 2);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), ErrorCannotRun);
    EXPECT_EQ(ToolkitErrorState(ErrorOfSystem), 2);
    backend.runResult = {3, 0, 0, true};
    IOsCommand({"rkeldrin", "a.std"}, 2);
    EXPECT_EQ(ToolkitErrorState(ErrorNumber), 0) << "the exit code is not looked at";
    ToolkitEvent event;
    EXPECT_FALSE(ToolkitPeekEvent(event)) << "the close waits for the next wait";
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventClose);
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventExposure) << "it is given once";
}

TEST(ToolkitEvents, PositionsFollowTheViewInForceWhenFetched) {
    ToldBackend backend;
    IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
    queueEvent({EventMouseDown, 1, 0, 1.5 / 24.0, 11.5 / 18.0});
    IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
    ToolkitEvent event;
    ToolkitNextEvent(event);
    EXPECT_EQ(event.x, 1.5F);
    EXPECT_EQ(event.y, 11.5F);

    float x = 6.0F;
    float y = 9.0F;
    int end = 0;
    backend.rubber = {EventMouseUp, 0.5, 0.25};
    WGrInput(RubberRectangle, x, y, end);
    EXPECT_EQ(end, EventMouseUp);
    EXPECT_EQ(x, 12.0F);
    EXPECT_EQ(y, 4.5F);
    x = 6.0F;
    y = 9.0F;
    backend.rubber = {EventClose, 0.0, 0.0};
    WGrInput(RubberRectangle, x, y, end);
    EXPECT_EQ(end, EventClose);
    ToolkitNextEvent(event);
    EXPECT_EQ(event.type, EventClose) << "put back for the loop";
}

TEST(ToolkitStart, WindowArgumentsAndExitCode) {
    {
        ToldBackend backend;
        EXPECT_EQ(ToolkitArgumentCount(), 1);
        EXPECT_EQ(ToolkitArgument(1), "line1.avg");
        EXPECT_EQ(ToolkitArgument(2), "");
        EXPECT_EQ(ToolkitWindowInfo(WindowWidth), 1000);
        EXPECT_EQ(ToolkitWindowInfo(WindowHeight), 800);
        EXPECT_EQ(ToolkitScreenInfo(ScreenWidth), 1600);
        EXPECT_TRUE(ToolkitHasSurface());
        EXPECT_EQ(ToolkitClose(), 42);
        EXPECT_EQ(toolkitState().backend, nullptr);
        EXPECT_EQ(ToolkitWindowInfo(WindowWidth), 0);
    }
    EXPECT_EQ(withoutMnemonic("E&xit Review"), "Exit Review");
}

} // namespace
} // namespace keldrin
