#include "toolkit/desktop/printing.h"

#include "toolkit/desktop/painter_surface.h"
#include "toolkit/surfaces/page_list.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>

#include <utility>

namespace keldrin {

namespace {

/// A page that goes to the printer when it is complete.
class PrintedPage : public PageList {
  public:
    explicit PrintedPage(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {}

    bool end() override {
        QPainter painter;
        if (!painter.begin(printer_.get())) {
            return false;
        }
        {
            const QRect paper = printer_->pageLayout().fullRectPixels(printer_->resolution());
            PainterSurface surface(painter, paper);
            replay(surface);
        }
        return painter.end() && printer_->printerState() != QPrinter::Error;
    }

  private:
    std::unique_ptr<QPrinter> printer_;
};

} // namespace

std::unique_ptr<Surface> choosePrinter(QWidget *parent, PrinterPage &page) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setPageOrientation(QPageLayout::Landscape); // as the page is
    printer->setFullPage(true); // the page's place is told from the edges of the paper
    if (parent != nullptr) {
        printer->setDocName(parent->windowTitle());
    }
    QPrintDialog dialog(printer.get(), parent);
    dialog.setOption(QAbstractPrintDialog::PrintToFile);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted) {
        return nullptr;
    }
    printer->setFullPage(true);
    const QRectF paper = printer->paperRect(QPrinter::Point);
    page = {paper.width(), paper.height()};
    return std::make_unique<PrintedPage>(std::move(printer));
}

} // namespace keldrin
