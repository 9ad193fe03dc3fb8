#pragma once

namespace keldrin {

/// One axis of a plot: values between two limits, which may fall, to fractions of the frame.
struct PlotScale {
    double min = 0.0;
    double max = 1.0;
    bool logarithmic = false;

    /// False for limits that are not finite, equal (or nearly, so that no ticks tell them apart),
    /// or not above 0 on a logarithmic axis.
    [[nodiscard]] bool isUsable() const;

    /// 0 at min, 1 at max, beyond them outside; NaN for a value that a logarithmic axis lacks.
    [[nodiscard]] double fractionOf(double value) const;
    [[nodiscard]] double valueAt(double fraction) const;
};

/// PlotScale::fractionOf() of many values: the ends of the axis are taken once.
class AxisFractions {
  public:
    explicit AxisFractions(const PlotScale &scale);
    [[nodiscard]] double of(double value) const;

  private:
    double low_;
    double span_;
    bool logarithmic_;
};

} // namespace keldrin
