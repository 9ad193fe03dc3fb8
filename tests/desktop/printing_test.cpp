#include "toolkit/desktop/printing.h"

#include "page/surfaces/surface.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <QPrinter>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>

namespace keldrin {
namespace {

std::unique_ptr<Surface> printTo(const std::string &path, PrinterPage &page) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFileName(QString::fromStdString(path));
    printer->setPageSize(QPageSize(QPageSize::A4));
    printer->setPageOrientation(QPageLayout::Landscape);
    return printerSurface(std::move(printer), page);
}

bool printLine(const std::string &path, PrinterPage &page) {
    const std::unique_ptr<Surface> paper = printTo(path, page);
    paper->begin(29.7F, 21.0F);
    paper->setPen(0, 0.6F);
    paper->polyline(std::array{PagePoint{0.1F, 0.5F}, PagePoint{0.9F, 0.5F}});
    return paper->end();
}

TEST(Printing, GoesOnTheWholePaperAndTellsItsFailure) {
    const TemporaryDirectory directory;
    PrinterPage page;
    EXPECT_TRUE(printLine(directory.path("a.pdf"), page));
    EXPECT_NEAR(page.width, 842.0, 1.0) << "margins of the printer are no matter";
    EXPECT_NEAR(page.height, 595.0, 1.0);
    EXPECT_EQ(fileContent(directory.path("a.pdf")).substr(0, 4), "%PDF");
    EXPECT_FALSE(printLine(directory.path("missing/a.pdf"), page));
}

} // namespace
} // namespace keldrin
