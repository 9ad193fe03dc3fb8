#include "sounding/page_layout.h"

#include "page/drawing.h"

namespace keldrin {

void beginReviewPage() {
    IGrArea(0.0F, 0.0F, 1.0F, 1.0F);
    IGrUnits(0.0F, 0.0F, 24.0F, 18.0F);
    ToolkitClearPage();
    ToolkitPageKind("page");
    ToolkitTextOrientation(0.0F);
    IGrColour("BLACK");
}

void selectTextSize(const PageTextSize &size) {
    WGrTextFont(0, 0, size.width, size.height);
}

} // namespace keldrin
