#include "toolkit/desktop/documents.h"

#include "base/clock.h"
#include "messages/message_log.h"
#include "page/drawing.h"
#include "page/hardcopy.h"
#include "page/surfaces/page_list.h"
#include "page/surfaces/placed_surface.h"
#include "shell/open_project.h"
#include "sounding/plan_view.h"
#include "sounding/plot_document.h"
#include "sounding/sounding_plot.h"
#include "support/files.h"
#include "support/picture.h"
#include "support/source_directory.h"
#include "support/temporary_directory.h"
#include "toolkit/desktop/painter_surface.h"
#include "toolkit/desktop/png_picture.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace keldrin {
namespace {

using testing::HasSubstr;

bool runs(const std::string &command) {
    return std::system(("(" + command + ") >/dev/null 2>&1").c_str()) == 0;
}

/// The pages of a survey, as lists to be drawn on any device, and as they must look.
class DocumentTest : public testing::Test {
  protected:
    DocumentTest() {
        fixClock(DateTime{2026, 5, 14, 9, 30, 0});
        const std::string examples = std::string(SourceDirectory) + "/examples/project/";
        for (const std::string name : {"inloop.std", "inloop.m1d"}) {
            std::filesystem::copy_file(examples + name, directory.path(name));
        }
        std::string path = directory.path("inloop.std");
        SurveyModel survey;
        EXPECT_EQ(OpenProject(survey, path), 0);
        PlotLimits limits;
        std::string date;
        std::string time;
        Plot_AutoLimits(survey, limits, date, time);
        draw(soundingPage, [&] { Plot_Sounding(survey, limits, 1, path, date, time); });
        draw(planPage, [&] { Plot_PlanView(survey, path); });
    }
    ~DocumentTest() override {
        selectSurface(nullptr);
        fixClock({});
        messageLog() = MessageLog{};
    }
    DocumentTest(const DocumentTest &) = delete;
    DocumentTest &operator=(const DocumentTest &) = delete;

    template <class Draw>
    static void draw(Surface &page, const Draw &plot) {
        selectSurface(&page);
        plot();
        selectSurface(nullptr);
    }

    // A file of the sounding page and, where it can hold more, the plan view.
    [[nodiscard]] std::string content(int driver) const {
        const std::unique_ptr<DocumentSurface> document = desktopDocument(driver);
        document->begin(PageWidthCm, PageHeightCm);
        PlacedSurface page(*document, PageWidthCm, PageHeightCm, {});
        soundingPage.replay(page);
        if (document->nextPage()) {
            planPage.replay(page);
        }
        EXPECT_TRUE(document->end());
        return document->document();
    }

    static void compare(const PageList &page, const QImage &shown) {
        RecordSurface record;
        page.replay(record);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        ASSERT_TRUE(shown.convertToFormat(QImage::Format_RGB888).save(&buffer, "PPM"));
        Picture picture;
        ASSERT_TRUE(picture.read(bytes.toStdString()));
        const InkMap wanted = pictureOf(record).inkMap();
        const InkMap ink = picture.inkMap();
        EXPECT_GT(correlation(wanted, ink), 0.8);
        EXPECT_EQ(inkWithoutCounterpart(wanted, ink), "") << "missing in the picture";
        EXPECT_EQ(inkWithoutCounterpart(ink, wanted), "") << "only in the picture";
    }

    TemporaryDirectory directory;
    PageList soundingPage;
    PageList planPage;
};

TEST_F(DocumentTest, APictureHas200DotsPerInchAndShowsThePage) {
    const std::string bytes = content(DriverPng);
    EXPECT_EQ(bytes, content(DriverPng));
    const QImage picture = QImage::fromData(QByteArray::fromStdString(bytes), "PNG");
    EXPECT_EQ(picture.size(), QSize(1890, 1417));
    EXPECT_EQ(picture.dotsPerMeterX(), 7874);
    compare(soundingPage, picture);
}

// Pixel by pixel; rows have no padding in the file, whatever their width.
TEST(PngPicture, GivesThePictureBack) {
    for (const QSize size : {QSize(1, 1), QSize(3, 2), QSize(641, 77)}) {
        QImage picture(size, QImage::Format_RGB32);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                picture.setPixel(x, y, qRgb(x & 255, 255 - (y & 255), (x * y + x / 256) & 255));
            }
        }
        picture.setDotsPerMeterX(7874);
        picture.setDotsPerMeterY(3937);
        const QByteArray bytes = QByteArray::fromStdString(pngOf(picture));
        const QImage back = QImage::fromData(bytes, "PNG");
        EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), picture) << size.width();
        EXPECT_FALSE(back.hasAlphaChannel());
        EXPECT_EQ(back.dotsPerMeterX(), 7874);
        EXPECT_EQ(back.dotsPerMeterY(), 3937);
    }
}

TEST_F(DocumentTest, WindowsOfAnyShapeShowThePage) {
    for (const QSize size :
         {QSize(960, 720), QSize(1062, 850), QSize(1600, 500), QSize(500, 900)}) {
        for (const PageList *page : {&soundingPage, &planPage}) {
            SCOPED_TRACE(std::to_string(size.width()) + (page == &planPage ? " plan" : ""));
            QImage window(size, QImage::Format_RGB32);
            QPainter painter(&window);
            {
                PainterSurface surface(painter, window.rect());
                page->replay(surface);
            }
            painter.end();
            compare(*page, window);
        }
    }
}

TEST_F(DocumentTest, ThePagesOfAPdfShowTheSameAndCanBeSearched) {
    if (!runs("command -v pdftoppm && command -v pdftotext")) {
        GTEST_SKIP() << "pdftoppm is not installed";
    }
    const std::string path = directory.path("inloop.pdf");
    putFile(path, content(DriverPdf));
    ASSERT_TRUE(runs("cd '" + directory.path() + "' && pdftoppm -r 100 -png inloop.pdf page"));
    compare(soundingPage, QImage(QString::fromStdString(directory.path("page-1.png"))));
    compare(planPage, QImage(QString::fromStdString(directory.path("page-2.png"))));
    EXPECT_FALSE(std::filesystem::exists(directory.path("page-3.png")));
    ASSERT_TRUE(runs("pdftotext '" + path + "'"));
    EXPECT_THAT(fileContent(directory.path("inloop.txt")),
                testing::AllOf(HasSubstr("Model Resistivity (ohm-m)"),
                               HasSubstr("Plan View of Survey Configuration")));
}

TEST_F(DocumentTest, APdfHasTheSameBytesEveryTimeAndTheDateOfTheClock) {
    // Letters of several fonts, which are written in the order of a hash.
    soundingPage.text({0.5F, 0.5F}, "\xE2\x98\x83 \xD7\x90 \xE6\xB8\xAC \xE0\xB8\x81", 0.01F, 0.02F,
                      0.0F);
    const std::string bytes = content(DriverPdf);
    EXPECT_THAT(bytes, HasSubstr("/CreationDate (D:20260514093000"));
    EXPECT_EQ(bytes, content(DriverPdf));
    putFile(directory.path("inloop.pdf"), bytes);
    EXPECT_EQ(plotDocumentPath(directory.path("inloop.std")), directory.path("inloop.pdf"))
        << "it is known as one of ours";
}

TEST(Documents, OnlyThoseOfTheWindowSystemAreMadeHere) {
    EXPECT_EQ(desktopDocument(DriverSvg), nullptr);
    EXPECT_EQ(desktopDocument(DriverPrinter), nullptr);
    const std::unique_ptr<DocumentSurface> unopened = desktopDocument(DriverPdf);
    EXPECT_FALSE(unopened->nextPage());
    EXPECT_FALSE(unopened->end());
}

} // namespace
} // namespace keldrin
