#pragma once

#include "page/surfaces/surface.h"

namespace keldrin {

/// Draws the same page on two surfaces, which must outlive it.
class TeeSurface : public Surface {
  public:
    TeeSurface(Surface &first, Surface &second) : first_(first), second_(second) {}

    void begin(float widthCm, float heightCm) override {
        first_.begin(widthCm, heightCm);
        second_.begin(widthCm, heightCm);
    }
    bool end() override {
        const bool ended = first_.end();
        return second_.end() && ended;
    }
    void clear() override {
        first_.clear();
        second_.clear();
    }
    void setPen(PageColour colour, float widthPt) override {
        first_.setPen(colour, widthPt);
        second_.setPen(colour, widthPt);
    }
    void polyline(std::span<const PagePoint> points) override {
        first_.polyline(points);
        second_.polyline(points);
    }
    void polygon(std::span<const PagePoint> points, bool filled) override {
        first_.polygon(points, filled);
        second_.polygon(points, filled);
    }
    void text(PagePoint at, std::string_view string, float charWidth, float charHeight,
              float degrees) override {
        first_.text(at, string, charWidth, charHeight, degrees);
        second_.text(at, string, charWidth, charHeight, degrees);
    }
    void flush() override {
        first_.flush();
        second_.flush();
    }
    void fill(std::span<const PagePoint> corners, PageColour colour) override {
        first_.fill(corners, colour);
        second_.fill(corners, colour);
    }
    [[nodiscard]] bool canFill() const override { return first_.canFill() && second_.canFill(); }
    void textAnchor(float part) override {
        first_.textAnchor(part);
        second_.textAnchor(part);
    }
    void naturalLetters(bool on) override {
        first_.naturalLetters(on);
        second_.naturalLetters(on);
    }
    void beginMarker(int marker, PagePoint centre) override {
        first_.beginMarker(marker, centre);
        second_.beginMarker(marker, centre);
    }
    void endMarker() override {
        first_.endMarker();
        second_.endMarker();
    }
    void pageKind(std::string_view kind) override {
        first_.pageKind(kind);
        second_.pageKind(kind);
    }

  private:
    Surface &first_;
    Surface &second_;
};

} // namespace keldrin
