#include "toolkit/desktop/printing.h"

#include "page/surfaces/page_list.h"
#include "toolkit/desktop/painter_surface.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

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
    printer->setDocName(QStringLiteral("KELDRIN plot")); // names the PDF that the dialog offers
    QPrintDialog dialog(printer.get(), parent);
    dialog.setOption(QAbstractPrintDialog::PrintToFile);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted) {
        return nullptr;
    }
    return printerSurface(std::move(printer), page);
}

std::unique_ptr<Surface> printerSurface(std::unique_ptr<QPrinter> printer, PrinterPage &page) {
    printer->setFullPage(true); // the page's place is measured from the edges of the paper
    const QRectF paper = printer->paperRect(QPrinter::Point);
    page = {paper.width(), paper.height()};
    return std::make_unique<PrintedPage>(std::move(printer));
}

} // namespace keldrin
