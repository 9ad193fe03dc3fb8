#pragma once

#include "page/surfaces/record_surface.h"
#include "toolkit/backend.h"

#include <string>

namespace keldrin {

/// What the backends without a display have in common: a screen and a root window that exist as
/// numbers, and a page that keeps what is drawn.
class HeadlessBackend : public Backend {
  public:
    void start() override {}
    int stop() override { return 0; }

    PixelSize screenSize() override { return screen_; }
    void openRoot(const RootSpec &spec) override;
    PixelRect rootRect() override { return root_; }
    void setTitle(std::string_view title) override { title_ = title; }
    void setMenu(int /*command*/, bool /*on*/) override {}
    void serveMenu(bool /*on*/) override {}
    Surface &screen() override { return page_; }
    /// What is drawn on the page of the root window.
    [[nodiscard]] const RecordSurface &page() const { return page_; }
    bool hasSurface() override { return surfaceOn_; }
    void flush() override {}

    bool peek(RawEvent & /*event*/) override { return false; }

    void loadDialog(DialogModel &dialog) override;
    void showDialog(DialogModel & /*dialog*/, DialogPlacement /*placement*/) override {}
    void hideDialog(DialogModel & /*dialog*/) override {}
    void unloadDialog(DialogModel & /*dialog*/) override {}
    void refresh(DialogModel & /*dialog*/, int /*id*/) override {}

    void trace(std::string_view /*kind*/, std::string_view /*text*/) override {}

  protected:
    PixelSize screen_ = {1600, 1000};
    PixelRect root_;
    std::string title_;
    RecordSurface page_;
    bool surfaceOn_ = true;
};

} // namespace keldrin
