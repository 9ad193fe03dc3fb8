#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace keldrin {

// Transient response of a layered earth to a rectangular wire loop on its surface, with all
// derivatives by the layers.
//
// Values are minus dB/dt per ampere of transmitter current for a receiver of one square metre, in
// nV/(A m2), times the turns of the loop: positive Z and the loop's moment point up. Lengths are
// metres, times seconds, resistivities ohm-m. What depends on loop, receiver, waveform and windows
// alone is worked out once, as a plan; a plan is never changed afterwards and any number of threads
// may use it at the same time. Everything is double precision, and the same input gives the same
// bits on one machine.
//
// The field of the loop is a sum over wavenumbers (loop_plan.h, hankel_curve.h) of the reflection
// of the layers (layer_kernel.h), inverted to time along contours shared by whole decades and
// averaged over waveform and windows in closed form (time_plan.h, contour.h, lag_density.h). Errors
// of window data above 0.01 nV/(A m2), against an independent quadrature, eight surveys of all four
// arrays:
//   median 1e-6 to 8e-6; nine of ten below 6e-5; largest 1.3e-3, beside the change of sign of an
//   offset receiver, where another survey had 5e-3
//   half-space, induction number r^2 mu0/(rho t) from 0.01 to 10^4: 1.6e-4 at most
//   derivatives against differences: below 1e-5 of the largest one of the same value

/// The loop and where the receiver stands in the loop's axes: x and y along the sides, origin at
/// the centre.
struct LoopGeometry {
    double sideX = 0.0;      ///< m
    double sideY = 0.0;      ///< m
    double rxX = 0.0;        ///< m; without meaning for a coincident loop
    double rxY = 0.0;        ///< m
    int turns = 1;           ///< of the transmitter
    bool coincident = false; ///< the wire receives too; its values are divided by the loop's area
    bool horizontal = false; ///< X and Y are wanted as well as Z

    bool operator==(const LoopGeometry &) const = default;
};

/// Current of the transmitter against time and the windows in which the receiver averages.
struct WindowSet {
    std::vector<double> times;    ///< s, rising; the current runs straight from point to point
    std::vector<double> currents; ///< A for each ampere of the current that data refer to
    double origin = 0.0;          ///< s; windows count from here. Not before the last point
    double frequency = 0.0;       ///< Hz, of the whole period; 0 for a single pulse
    std::vector<double> lower;    ///< s after the origin, above 0
    std::vector<double> upper;    ///< s after the origin; equal to `lower` for a sample

    bool operator==(const WindowSet &) const = default;
};

struct TimePlan;
struct LoopPlan;

/// Loop, receiver, waveform and windows made ready. A default one holds nothing: no windows.
struct ResponsePlan {
    std::shared_ptr<const TimePlan> time;
    std::shared_ptr<const LoopPlan> loop;

    [[nodiscard]] std::size_t windows() const;
    /// 3 (X, Y, Z) where the horizontal ones were asked for, else 1 (Z).
    [[nodiscard]] std::size_t components() const;
};

/// What is wrong with a plan's input.
enum class PlanFault {
    None,
    Side,      ///< of the loop: not finite, or outside 1e-3 to 1e6 m
    Receiver,  ///< not finite, or farther away than 1e6 m
    Waveform,  ///< fewer than two points, times that fall or lie after the origin, no change
    Frequency, ///< negative or not finite
    Windows,   ///< none
    Window,    ///< edges outside 1e-7 to 1000 s, or the upper one before the lower one
};

/// A short clause for a message: "window outside of 1e-7 to 1000 s".
std::string planFaultText(PlanFault fault);

/// What is wrong with the input of a plan, the loop first.
PlanFault checkResponsePlan(const LoopGeometry &loop, const WindowSet &windows);

/// Makes one plan, in 1 to 3 milliseconds, the more windows the longer. Checks everything first.
/// plan  replaced when the result is None, else left as it was
PlanFault makeResponsePlan(const LoopGeometry &loop, const WindowSet &windows, ResponsePlan &plan);

/// Room for the intermediate values of one thread; it grows as needed and can be used for any plan.
struct ResponseWorkspace {
    std::vector<double> store;
};

/// The response of one layered earth.
///
/// lnResistivity  top to bottom, at least one layer; the last one is a half-space. ln of ohm-m;
///                values outside ln(1e-3) to ln(1e6) are held there
/// thickness      m, above 0; at least one value fewer than there are layers
/// data           components() times windows() values in nV/(A m2), a component after the other
/// jacobian       d data / d lnResistivity, a row of all layers for each value of `data`; or empty
void layeredResponse(const ResponsePlan &plan, std::span<const double> lnResistivity,
                     std::span<const double> thickness, ResponseWorkspace &workspace,
                     std::span<double> data, std::span<double> jacobian = {});

} // namespace keldrin
