#include "screen/log_view.h"

#include "messages/message_log.h"
#include "page/drawing.h"
#include "screen/graphics_errors.h"
#include "toolkit/toolkit.h"

#include <cmath>

namespace keldrin {

namespace {

// The page is 28 units across a full screen, so letters keep their size when the window changes.
constexpr float UnitsAcrossScreen = 28.0F;
constexpr float CharacterHeight = 0.3528F;
constexpr int PlainFont = 100;

struct LogPage {
    float width = 0.0F;
    float height = 0.0F;
};

LogPage logPage() {
    const auto windowWidth = static_cast<float>(ToolkitWindowInfo(WindowWidth));
    const auto windowHeight = static_cast<float>(ToolkitWindowInfo(WindowHeight));
    const auto screenWidth = static_cast<float>(ToolkitScreenInfo(ScreenWidth));
    if (!(windowWidth > 0.0F) || !(windowHeight > 0.0F) || !(screenWidth > 0.0F)) {
        return {};
    }
    const float width = UnitsAcrossScreen * windowWidth / screenWidth;
    return {width, width * windowHeight / windowWidth};
}

// The newest lines that fit, from the top of the window down.
void drawNewestLines(float pageHeight) {
    const std::vector<MessageLine> &lines = messageLog().LogLineBuffer;
    const float characterWidth = ToolkitTextMetric(TextCharacterWidth);
    const float characterHeight = ToolkitTextMetric(TextCharacterHeight);
    if (!(characterHeight > 0.0F)) {
        return;
    }
    const auto fitting = static_cast<std::size_t>(std::floor(pageHeight / characterHeight));
    const std::size_t first = lines.size() > fitting ? lines.size() - fitting : 0;
    float y = pageHeight;
    for (std::size_t i = first; i < lines.size(); ++i) {
        y -= characterHeight;
        if (!lines[i].isBlank()) {
            ToolkitDrawText(characterWidth, y, lines[i].view());
        }
    }
}

} // namespace

void selectLogFont() {
    const LogPage page = logPage();
    if (page.height > 0.0F) {
        const float height = CharacterHeight / page.height;
        WGrTextFont(PlainFont, 0, height * 4.0F / 9.0F, height);
    }
}

void LogText_Update() {
    if (!ToolkitHasSurface()) {
        return;
    }
    CheckGraphicsError("LogText_Update 241");
    const DrawingView view = ToolkitSaveView();
    const LogPage page = logPage();
    if (!(page.height > 0.0F)) {
        return;
    }
    IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
    IGrUnits(0.0F, 0.0F, page.width, page.height);
    ToolkitClearPage();
    ToolkitPageKind("log");
    selectLogFont();
    CheckGraphicsError("LogText_Update 268");
    ToolkitTextOrientation(0.0F);
    IGrColour("BLACK");
    drawNewestLines(page.height);
    CheckGraphicsError("LogText_Update 285");
    ToolkitRestoreView(view);
    CheckGraphicsError("LogText_Update 289");
    ToolkitFlush();
}

void ClearLog() {
    ToolkitEvent event;
    while (ToolkitPeekEvent(event)) {
        if (event.type == EventClose) {
            ShutDown();
        }
        if (event.type == EventKey || event.type == EventMouseDown) {
            break;
        }
        if (event.type == EventExposure || event.type == EventResize) {
            LogText_Update();
        }
    }
    messageLog().LogLineBuffer.clear();
    if (ToolkitHasSurface()) {
        ToolkitClearPage();
        ToolkitPageKind("blank");
    }
}

} // namespace keldrin
