#include "toolkit/desktop/painter_surface.h"

#include "page/page_colours.h"
#include "page/surfaces/page_list.h"
#include "page/text_metrics.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

namespace keldrin {
namespace {

constexpr float PenPt = 0.6F;
constexpr PagePoint Middle = {0.4F, 0.5F};

/// A page as pixels show it.
class Screen {
  public:
    Screen(QSize size, double pixelRatio) : picture(size * pixelRatio, QImage::Format_RGB32) {
        picture.setDevicePixelRatio(pixelRatio);
        picture.fill(Qt::white);
        painter_.begin(&picture);
        surface_ = std::make_unique<PainterSurface>(painter_, QRectF(QPointF(0, 0), size));
        surface_->setPen(Colour::Black, PenPt);
    }
    explicit Screen(QSize size) : Screen(size, 1.0) {}

    Surface &surface() { return *surface_; }
    void finish() {
        surface_.reset();
        painter_.end();
    }
    [[nodiscard]] int ink(int x, int y) const { return 255 - qGray(picture.pixel(x, y)); }

    /// The smallest rectangle of pixels that holds all the ink.
    [[nodiscard]] QRect inkBounds() const {
        QRect bounds;
        const int width = picture.width();
        const std::vector<QRgb> blank(static_cast<std::size_t>(width), QColor(Qt::white).rgb());
        for (int y = 0; y < picture.height(); ++y) {
            const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
            if (std::memcmp(row, blank.data(), blank.size() * sizeof(QRgb)) == 0) {
                continue; // most rows
            }
            for (int x = 0; x < width; ++x) {
                if (255 - qGray(row[x]) > faintest) {
                    bounds |= QRect(x, y, 1, 1);
                }
            }
        }
        return bounds;
    }

    QImage picture;

  private:
    static constexpr int faintest = 16;

    QPainter painter_;
    std::unique_ptr<PainterSurface> surface_;
};

constexpr std::array Shapes = {QSize(960, 720), QSize(1062, 850), QSize(1600, 500),
                               QSize(500, 900)};

struct Letters {
    float width;
    float height;
};

constexpr std::array Sizes = {Letters{0.00872695F, 0.0196111F}, Letters{0.00698156F, 0.0156889F},
                              Letters{0.0104723F, 0.0235333F}};

const std::array<std::string, 8> Texts = {"Plan View of Survey Configuration",
                                          "iiiilll1111.,.:;",
                                          "WWWWMMMM@@@@",
                                          "-1.234e-5",
                                          "Time (msec)",
                                          "dB/dt (nV/Am2)",
                                          "Jos\xC3\xA9 \xCE\xA9\xE2\x84\xA6 \xE6\xB8\xAC",
                                          "0"};

QRect drawnText(QSize shape, const std::string &text, const Letters &letters, float degrees,
                float anchor) {
    Screen screen(shape);
    screen.surface().textAnchor(anchor);
    screen.surface().text(Middle, text, letters.width, letters.height, degrees);
    screen.finish();
    return screen.inkBounds();
}

TEST(PainterSurfaceText, StaysWithinItsToldWidthOnPagesOfAnyShape) {
    constexpr double slack = 1.5; // pixels: edges of letters
    for (const QSize &shape : Shapes) {
        for (const std::string &text : Texts) {
            for (const Letters &letters : Sizes) {
                const double told =
                    static_cast<double>(textWidthInEms(text) * EmPerCharacterWidth * letters.width);
                const QRect across = drawnText(shape, text, letters, 0.0F, 0.0F);
                EXPECT_GE(across.left(), 0.4 * shape.width() - slack) << text;
                EXPECT_LE(across.right(), (0.4 + told) * shape.width() + slack) << text;
                EXPECT_LE(across.height(),
                          1.3 * static_cast<double>(letters.height) * shape.height())
                    << text;
                // Upright, the text is as long as on paper: in page centimetres.
                const double upward = told * 24.0 / 18.0;
                const QRect upright = drawnText(shape, text, letters, 90.0F, 0.0F);
                EXPECT_LE(upright.bottom(), 0.5 * shape.height() + slack) << text;
                EXPECT_GE(upright.top(), (0.5 - upward) * shape.height() - slack) << text;
            }
        }
    }
}

TEST(PainterSurfaceText, KeepsItsShapeAndItsAnchorOnAWidePage) {
    const std::string text = "HHHHHHHHHH";
    const Letters letters = Sizes[0];
    const double told =
        static_cast<double>(textWidthInEms(text) * EmPerCharacterWidth * letters.width) * 1600.0;
    const QRect left = drawnText({1600, 500}, text, letters, 0.0F, 0.0F);
    const QRect centred = drawnText({1600, 500}, text, letters, 0.0F, 0.5F);
    const QRect right = drawnText({1600, 500}, text, letters, 0.0F, 1.0F);
    EXPECT_LT(left.width(), 0.7 * told) << "letters are not stretched";
    EXPECT_NEAR(left.left(), 640.0, 2.0);
    EXPECT_NEAR(centred.left() + centred.right(), 2.0 * (640.0 + told / 2.0), 4.0);
    EXPECT_NEAR(right.right(), 640.0 + told, 3.0);
    const QRect low = drawnText({500, 900}, text, letters, 0.0F, 0.0F);
    const double capital = static_cast<double>(CapitalHeight * letters.height) * 900.0;
    EXPECT_LT(low.height(), 0.6 * capital);
    EXPECT_NEAR(low.top() + low.bottom(), 2.0 * (450.0 - capital / 2.0), 4.0)
        << "in the middle of its line";
    const QRect natural = drawnText({960, 720}, text, letters, 0.0F, 0.0F);
    const QRect upright = drawnText({960, 720}, text, letters, 90.0F, 0.0F);
    EXPECT_NEAR(natural.width(), upright.height(), 2);
    EXPECT_NEAR(natural.height(), upright.width(), 1);
}

TEST(PainterSurfaceText, BytesThatAreNoTextDoNoHarm) {
    for (const std::string text : {"", "\xFF\xC3", "a\nb\tc", "\x01"}) {
        drawnText({200, 150}, text, Sizes[0], 0.0F, 0.0F);
    }
    EXPECT_LE(drawnText({200, 150}, "a\nb", {0.05F, 0.1F}, 0.0F, 0.0F).height(), 15)
        << "a text is one line";
}

// A marker as the plots draw it, of a given width and height as parts of the page.
void drawMarker(Surface &surface, int marker, PagePoint at, float width, float height) {
    surface.beginMarker(marker, at);
    const float x = width / 2.0F;
    const float y = height / 2.0F;
    if (marker == 1) {
        surface.polyline(std::array{PagePoint{at.x - x, at.y}, PagePoint{at.x + x, at.y}});
        surface.polyline(std::array{PagePoint{at.x, at.y - y}, PagePoint{at.x, at.y + y}});
    } else {
        std::array<PagePoint, 12> corners;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const float angle = std::numbers::pi_v<float> * static_cast<float>(i) / 6.0F;
            corners[i] = {at.x + x * std::cos(angle), at.y + y * std::sin(angle)};
        }
        surface.polygon(corners, true);
    }
    surface.endMarker();
}

TEST(PainterSurfaceMarkers, AreRoundAndSymmetricalOnPagesOfAnyShape) {
    for (const QSize &shape : Shapes) {
        for (const int marker : {1, 14}) {
            for (int i = 0; i < 20; ++i) {
                Screen screen(shape);
                const auto shift = static_cast<float>(i) * 0.0137F;
                drawMarker(screen.surface(), marker, {0.3F + shift, 0.4F + shift}, 0.00523617F,
                           0.0069729F);
                screen.finish();
                const QRect bounds = screen.inkBounds();
                EXPECT_EQ(bounds.width(), bounds.height()) << shape.width() << " " << marker;
                EXPECT_GE(bounds.width(), 3);
                EXPECT_EQ(bounds.width() % 2, 1) << "as much on either side of the middle";
                EXPECT_NEAR(bounds.center().x(), static_cast<double>(0.3F + shift) * shape.width(),
                            1.01);
                EXPECT_NEAR(bounds.center().y(), static_cast<double>(0.6F - shift) * shape.height(),
                            1.01);
            }
        }
    }
}

// How many pixels in a row across a line are inked, and whether all are fully so.
struct Stroke {
    int pixels = 0;
    bool full = true;
};

Stroke strokeAcross(const Screen &screen, int x, int y, bool rightward) {
    Stroke stroke;
    for (int i = -12; i <= 12; ++i) {
        const int ink = rightward ? screen.ink(x + i, y) : screen.ink(x, y + i);
        stroke.pixels += ink > 0 ? 1 : 0;
        stroke.full = stroke.full && (ink == 0 || ink == 255);
    }
    return stroke;
}

TEST(PainterSurfaceLines, AlongAxesCoverWholePixelsAtEveryPixelRatio) {
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const double perPoint = 720.0 * ratio / 18.0 * 2.54 / 72.0;
        const int wanted = std::max(1, static_cast<int>(std::lround(0.6 * perPoint)));
        for (int i = 0; i < 10; ++i) {
            Screen screen({960, 720}, ratio);
            const float place = 0.31F + static_cast<float>(i) * 0.00037F;
            screen.surface().polyline(std::array{PagePoint{place, 0.1F}, PagePoint{place, 0.9F}});
            screen.surface().polyline(std::array{PagePoint{0.5F, place}, PagePoint{0.9F, place}});
            screen.finish();
            const int width = screen.picture.width();
            const int height = screen.picture.height();
            const Stroke upright = strokeAcross(
                screen, static_cast<int>(static_cast<double>(place) * width), height / 2, true);
            const Stroke level =
                strokeAcross(screen, width * 7 / 10,
                             static_cast<int>(static_cast<double>(1.0F - place) * height), false);
            for (const Stroke &stroke : {upright, level}) {
                EXPECT_TRUE(stroke.full) << "ratio " << ratio;
                EXPECT_EQ(stroke.pixels, wanted) << "ratio " << ratio;
            }
        }
    }
}

TEST(PainterSurfaceLines, AFrameOnTheEdgeOfThePageIsSeenWhole) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        Screen screen({333, 251}, ratio);
        screen.surface().polygon(std::array{PagePoint{0.0F, 0.0F}, PagePoint{1.0F, 0.0F},
                                            PagePoint{1.0F, 1.0F}, PagePoint{0.0F, 1.0F}},
                                 false);
        screen.finish();
        const int right = screen.picture.width() - 1;
        const int bottom = screen.picture.height() - 1;
        for (const QPoint &corner : {QPoint(0, 0), QPoint(right, 0), QPoint(right, bottom),
                                     QPoint(0, bottom), QPoint(right, bottom / 2)}) {
            EXPECT_EQ(screen.ink(corner.x(), corner.y()), 255) << ratio;
        }
        EXPECT_EQ(screen.ink(right / 2, bottom / 2), 0);
    }
}

TEST(PainterSurfaceLines, CurvesAreSmoothAndNoThinnerThanAPixel) {
    Screen screen({300, 200});
    screen.surface().setPen(Colour::Red, 0.01F);
    screen.surface().polyline(std::array{PagePoint{0.1F, 0.1F}, PagePoint{0.9F, 0.3F}});
    screen.finish();
    int shades = 0;
    for (int x = 60; x < 240; ++x) {
        int column = 0;
        for (int y = 0; y < 200; ++y) {
            const QRgb pixel = screen.picture.pixel(x, y);
            column += 255 - qGreen(pixel);
            shades += qGreen(pixel) > 0 && qGreen(pixel) < 255 ? 1 : 0;
        }
        EXPECT_GE(column, 200) << "about one pixel of ink in each column";
    }
    EXPECT_GT(shades, 100);
}

TEST(PainterSurfacePage, AListDrawsTheSamePageAgain) {
    const auto draw = [](Surface &surface) {
        surface.clear();
        surface.setPen(Colour::Blue, PenPt);
        surface.polyline(std::array{PagePoint{0.1F, 0.1F}, PagePoint{0.5F, 0.7F}});
        surface.setPen(Colour::Red, 3.0F);
        surface.polygon(
            std::array{PagePoint{0.2F, 0.2F}, PagePoint{0.4F, 0.2F}, PagePoint{0.3F, 0.5F}}, true);
        surface.fill(
            std::array{PagePoint{0.5F, 0.5F}, PagePoint{0.9F, 0.5F}, PagePoint{0.7F, 0.9F}},
            0x21918C);
        drawMarker(surface, 14, {0.7F, 0.3F}, 0.02F, 0.03F);
        drawMarker(surface, 1, {0.6F, 0.3F}, 0.02F, 0.03F);
        surface.textAnchor(1.0F);
        surface.text(Middle, "anchored", 0.02F, 0.03F, 0.0F);
        surface.text({0.8F, 0.2F}, "upright", 0.02F, 0.03F, 90.0F);
    };
    PageList list;
    list.polyline(std::array{PagePoint{0.0F, 0.0F}, PagePoint{1.0F, 1.0F}}); // cleared away
    draw(list);
    Screen direct({640, 300}, 1.5);
    draw(direct.surface());
    direct.finish();
    Screen again({640, 300}, 1.5);
    again.surface().polyline(std::array{PagePoint{0.0F, 1.0F}, PagePoint{1.0F, 0.0F}});
    list.replay(again.surface());
    again.finish();
    EXPECT_EQ(direct.picture, again.picture);

    const std::uint64_t changes = list.changes();
    list.setPen(Colour::Black, PenPt);
    EXPECT_GT(list.changes(), changes);
    list.clear();
    EXPECT_TRUE(list.isEmpty());
}

// A fan of areas about a point, none of whose edges lies on pixels.
TEST(PainterSurfaceAreas, HaveTheirColourAndLeaveNoSeam) {
    constexpr PageColour colour = 0x21918C;
    constexpr int parts = 17;
    const auto at = [](int part) {
        const float angle = 2.0F * std::numbers::pi_v<float> * static_cast<float>(part) / parts;
        return PagePoint{Middle.x + 0.3F * std::cos(angle), Middle.y + 0.4F * std::sin(angle)};
    };
    for (const double ratio : {1.0, 1.25, 2.0}) {
        Screen screen({333, 251}, ratio);
        for (int part = 0; part < parts; ++part) {
            screen.surface().fill(std::array{Middle, at(part), at(part + 1)}, colour);
        }
        screen.finish();
        int filled = 0;
        for (int y = 0; y < screen.picture.height(); ++y) {
            for (int x = 0; x < screen.picture.width(); ++x) {
                const QRgb pixel = screen.picture.pixel(x, y) & 0xFFFFFFU;
                EXPECT_TRUE(pixel == colour || pixel == 0xFFFFFFU) << x << " " << y;
                filled += pixel == colour ? 1 : 0;
            }
        }
        const double polygon = parts / 2.0 * std::sin(2.0 * std::numbers::pi / parts);
        const double pixels = screen.picture.width() * screen.picture.height();
        EXPECT_NEAR(filled, polygon * 0.3 * 0.4 * pixels, 0.002 * pixels) << ratio;
    }
}

TEST(PainterSurfaceAreas, AreTheSamePixelsAsRectanglesAndAsPolygons) {
    constexpr int steps = 90; // of edges, by parts of a pixel
    constexpr PageColour colour = 0x21918C;
    for (const double ratio : {1.0, 1.25}) {
        Screen rectangles({333, 251}, ratio);
        Screen polygons({333, 251}, ratio);
        for (int i = 0; i < steps; ++i) {
            const float left = 0.0107F * static_cast<float>(i);
            const float right = left + 0.0001F * static_cast<float>(i);
            for (int k = 0; k < steps; ++k) {
                const float bottom = 0.0109F * static_cast<float>(k);
                const float top = bottom + 0.0001F * static_cast<float>(k);
                const std::array corners = {PagePoint{left, bottom}, PagePoint{right, bottom},
                                            PagePoint{right, top}, PagePoint{left, top},
                                            PagePoint{left, (bottom + top) / 2.0F}};
                rectangles.surface().fill(std::span(corners).first(4), colour);
                polygons.surface().fill(corners, colour);
            }
        }
        rectangles.finish();
        polygons.finish();
        EXPECT_EQ(rectangles.picture, polygons.picture) << ratio;
    }
}

TEST(PainterSurfacePage, FillsItsTargetOnlyAndLeavesThePainterAsItWas) {
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(Qt::green);
    QPainter painter(&picture);
    painter.translate(10.0, 0.0);
    const QTransform before = painter.transform();
    {
        PainterSurface surface(painter, QRectF(20.0, 10.0, 100.0, 50.0));
        surface.clear();
        surface.setPen(Colour::Black, PenPt);
        surface.polyline(std::array{PagePoint{0.0F, 0.5F}, PagePoint{1.0F, 0.5F}});
    }
    EXPECT_EQ(painter.transform(), before);
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
    painter.end();
    EXPECT_EQ(picture.pixelColor(29, 35), QColor(Qt::green));
    EXPECT_EQ(picture.pixelColor(30, 20), QColor(Qt::white));
    EXPECT_EQ(picture.pixelColor(129, 59), QColor(Qt::white));
    EXPECT_EQ(picture.pixelColor(130, 59), QColor(Qt::green));
    EXPECT_EQ(picture.pixelColor(80, 35), QColor(Qt::black));
}

} // namespace
} // namespace keldrin
