#include "toolkit/desktop/documents.h"

#include "base/clock.h"
#include "base/real.h"
#include "base/version.h"
#include "page/hardcopy.h"
#include "page/surfaces/page_list.h"
#include "page/surfaces/pdf_bookmarks.h"
#include "toolkit/desktop/painter_surface.h"
#include "toolkit/desktop/png_picture.h"

#include <QBuffer>
#include <QHashSeed>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace keldrin {

namespace {

/// Keeps a page until it is complete.
class ListedDocument : public DocumentSurface {
  public:
    void begin(float widthCm, float heightCm) override {
        widthCm_ = widthCm;
        heightCm_ = heightCm;
        page_.begin(widthCm, heightCm);
    }
    void clear() override { page_.clear(); }
    void setPen(PageColour colour, float widthPt) override { page_.setPen(colour, widthPt); }
    void polyline(std::span<const PagePoint> points) override { page_.polyline(points); }
    void polygon(std::span<const PagePoint> points, bool filled) override {
        page_.polygon(points, filled);
    }
    void text(PagePoint at, std::string_view string, float charWidth, float charHeight,
              float degrees) override {
        page_.text(at, string, charWidth, charHeight, degrees);
    }
    void flush() override {}
    void fill(std::span<const PagePoint> corners, PageColour colour) override {
        page_.fill(corners, colour);
    }
    void textAnchor(float part) override { page_.textAnchor(part); }
    void naturalLetters(bool on) override { page_.naturalLetters(on); }
    void beginMarker(int marker, PagePoint centre) override { page_.beginMarker(marker, centre); }
    void endMarker() override { page_.endMarker(); }

    [[nodiscard]] const std::string &document() const override { return document_; }

  protected:
    PageList page_;
    float widthCm_ = PageWidthCm;
    float heightCm_ = PageHeightCm;
    std::string document_;
};

void drawPage(const PageList &page, QPainter &painter, const QRectF &target) {
    PainterSurface surface(painter, target);
    page.replay(surface);
}

class PngDocument : public ListedDocument {
  public:
    bool end() override {
        constexpr double dotsPerCm = 200.0 / CmPerInch;
        const auto dots = [](float cm) {
            return nearestInt(static_cast<double>(cm) * dotsPerCm);
        };
        QImage picture(dots(widthCm_), dots(heightCm_), QImage::Format_RGB32);
        if (picture.isNull()) {
            return false;
        }
        picture.setDotsPerMeterX(nearestInt(dotsPerCm * 100.0));
        picture.setDotsPerMeterY(nearestInt(dotsPerCm * 100.0));
        QPainter painter(&picture);
        drawPage(page_, painter, picture.rect());
        painter.end();
        document_ = pngOf(picture);
        return !document_.empty();
    }
};

/// Takes each page into the file as soon as the next one begins.
class PdfDocument : public ListedDocument {
  public:
    void begin(float widthCm, float heightCm) override {
        constexpr int dotsPerInch = 1200;
        ListedDocument::begin(widthCm, heightCm);
        // Fonts are written in the order of a hash, which is another one in every run.
        QHashSeed::setDeterministicGlobalSeed();
        writer_.setCreator(QString::fromUtf8(ProgramIdentity.data(), ProgramIdentity.size()));
        writer_.setPageSize(QPageSize(
            QSizeF(static_cast<double>(widthCm), static_cast<double>(heightCm)) * MillimetresPerCm,
            QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
        writer_.setPageMargins(QMarginsF(0.0, 0.0, 0.0, 0.0));
        writer_.setResolution(dotsPerInch);
        begun_ = bytes_.open(QIODevice::WriteOnly);
    }

    bool nextPage() override {
        if (!begun_ || !draw()) {
            return false;
        }
        page_.clear();
        begun_ = writer_.newPage();
        ++pageNumber_;
        return begun_;
    }

    void title(std::string_view text) override {
        writer_.setTitle(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }

    void bookmark(std::string_view text, int level) override {
        bookmarks_.push_back({std::string(text), level, pageNumber_});
    }

    bool end() override {
        if (!begun_ || !draw()) {
            return false;
        }
        const bool good = painter_.end();
        document_ = bytes_.buffer().toStdString();
        setDate();
        document_ += pdfBookmarks(document_, bookmarks_);
        return good && !document_.empty();
    }

  private:
    static constexpr double MillimetresPerCm = 10.0;

    // The file begins with its title, so nothing is written before the first page is complete.
    bool draw() {
        if (!painter_.isActive() && !painter_.begin(&writer_)) {
            return false;
        }
        drawPage(page_, painter_, QRectF(0.0, 0.0, writer_.width(), writer_.height()));
        return true;
    }

    // Puts the program's moment where the writer has put the system's, digit for digit.
    void setDate() {
        constexpr std::string_view mark = "/CreationDate (D:";
        constexpr std::size_t digits = 14;
        const DateTime now = clockNow();
        std::array<char, 32> text{};
        const int written =
            std::snprintf(text.data(), text.size(), "%04d%02d%02d%02d%02d%02d", now.year, now.month,
                          now.day, now.hour, now.minute, now.second);
        const std::size_t found = document_.find(mark);
        if (written == static_cast<int>(digits) && found != std::string::npos) {
            document_.replace(found + mark.size(), digits, text.data());
        }
    }

    QBuffer bytes_;
    QPdfWriter writer_{&bytes_};
    QPainter painter_;
    bool begun_ = false;
    std::size_t pageNumber_ = 0;
    std::vector<PdfBookmark> bookmarks_;
};

} // namespace

std::unique_ptr<DocumentSurface> desktopDocument(int driver) {
    switch (driver) {
    case DriverPng:
        return std::make_unique<PngDocument>();
    case DriverPdf:
        return std::make_unique<PdfDocument>();
    default:
        return nullptr;
    }
}

} // namespace keldrin
