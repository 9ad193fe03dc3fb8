#include "engine/slow_response.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

namespace keldrin::slow {

namespace {

using Complex = std::complex<double>;
constexpr double Pi = std::numbers::pi;
constexpr double Mu0 = 4.0e-7 * Pi;

struct Rule {
    std::vector<double> x, w;
};

// Gauss-Legendre of 10 points, on as many panels as asked for.
void addPanels(Rule &rule, double a, double b, int count = 1) {
    constexpr double node[] = {0.1488743389816312, 0.4333953941292472, 0.6794095682990244,
                               0.8650633666889845, 0.9739065285171717};
    constexpr double weight[] = {0.2955242247147529, 0.2692667193099963, 0.2190863625159820,
                                 0.1494513491505806, 0.0666713443081376};
    const double half = 0.5 * (b - a) / count;
    for (int i = 0; i < count; ++i) {
        for (int n = 0; n < 5; ++n) {
            for (const double sign : {-1.0, 1.0}) {
                rule.x.push_back(a + (2 * i + 1) * half + sign * half * node[n]);
                rule.w.push_back(half * weight[n]);
            }
        }
    }
}

// Points of a wire from a to b, closer together near the foot of the receiver at distance d, and
// never in panels of more than a wave.
Rule wireRule(double a, double b, double d, double lambda) {
    Rule rule;
    double from = a;
    while (from < b) {
        const double size = from < 0.0 ? -0.5 * from : from;
        const double step = std::min(std::max(0.5 * size, 0.5 * std::fabs(d)), 7.0 / lambda);
        const double to = step > b - from - 0.01 * step ? b : from + step;
        addPanels(rule, from, to);
        from = to;
    }
    return rule;
}

// lambda times the line integrals of the header's formulas for the wire with the outward normal.
void addWire(double a, double b, double d, double normal, double lambda, double &z, double &h) {
    const Rule rule = wireRule(a, b, d, lambda);
    for (std::size_t i = 0; i < rule.x.size(); ++i) {
        const double r = std::hypot(rule.x[i], d);
        z += rule.w[i] * lambda * ::j1(lambda * r) * normal * d / r;
        h += rule.w[i] * lambda * ::j0(lambda * r) * normal;
    }
}

Field loopKernel(const LoopGeometry &loop, double lambda) {
    const double x1 = -0.5 * loop.sideX - loop.rxX;
    const double x2 = 0.5 * loop.sideX - loop.rxX;
    const double y1 = -0.5 * loop.sideY - loop.rxY;
    const double y2 = 0.5 * loop.sideY - loop.rxY;
    Field sum = {};
    addWire(y1, y2, x1, -1.0, lambda, sum[2], sum[0]);
    addWire(y1, y2, x2, 1.0, lambda, sum[2], sum[0]);
    addWire(x1, x2, y1, -1.0, lambda, sum[2], sum[1]);
    addWire(x1, x2, y2, 1.0, lambda, sum[2], sum[1]);
    return sum;
}

// The mean over the loop's area of its own vertical field: the Fourier transform of the rectangle,
// squared, averaged over all directions of the wavenumber.
Field coincidentKernel(const LoopGeometry &loop, double lambda) {
    Rule rule;
    addPanels(rule, 0.0, 0.5 * Pi, 2 + static_cast<int>(lambda * (loop.sideX + loop.sideY) / 4.0));
    const auto sinc = [](double x) {
        return x < 1.0e-6 ? 1.0 : std::sin(x) / x;
    };
    double sum = 0.0;
    for (std::size_t i = 0; i < rule.x.size(); ++i) {
        const double f = sinc(0.5 * lambda * loop.sideX * std::cos(rule.x[i])) *
                         sinc(0.5 * lambda * loop.sideY * std::sin(rule.x[i]));
        sum += rule.w[i] * f * f;
    }
    return {0.0, 0.0, loop.sideX * loop.sideY * lambda * lambda * sum * 2.0 / Pi};
}

Complex reflection(const Earth &earth, double lambda, Complex s) {
    const auto root = [&](std::size_t k) {
        return std::sqrt(lambda * lambda + s * Mu0 / earth.rho[k]);
    };
    Complex Y = root(earth.rho.size() - 1);
    for (std::size_t k = earth.rho.size() - 1; k-- > 0;) {
        const Complex u = root(k);
        const Complex e = std::exp(-2.0 * u * earth.thickness[k]);
        const Complex r = (u - Y) / (u + Y) * e;
        Y = u * (1.0 - r) / (1.0 + r);
    }
    return (lambda - Y) / (lambda + Y);
}

double highestWavenumber(double rho, double t) {
    return 5.6 * std::sqrt(Mu0 / (rho * t));
}

// Chebyshev interpolation in ln(t) on half decades.
class StepTable {
  public:
    explicit StepTable(const StepResponse &response) : step(response) {}

    Field at(double t) {
        const double place = 2.0 * std::log10(t);
        const int panel = static_cast<int>(std::floor(place));
        const double x = 2.0 * (place - panel) - 1.0;
        const std::vector<Field> &values = panelAt(panel);
        Field sum = {};
        double weights = 0.0;
        for (int i = 0; i < Points; ++i) {
            const double distance = x - node(i);
            if (distance == 0.0) {
                return values[static_cast<std::size_t>(i)];
            }
            const double w =
                (i % 2 == 0 ? 1.0 : -1.0) * std::sin((2 * i + 1) * Pi / (2 * Points)) / distance;
            weights += w;
            for (std::size_t c = 0; c < 3; ++c) {
                sum[c] += w * values[static_cast<std::size_t>(i)][c];
            }
        }
        return {sum[0] / weights, sum[1] / weights, sum[2] / weights};
    }

  private:
    static constexpr int Points = 9;
    static double node(int i) { return std::cos((2 * i + 1) * Pi / (2 * Points)); }

    const std::vector<Field> &panelAt(int panel) {
        std::vector<Field> &values = panels[panel];
        for (int i = 0; values.size() < Points; ++i) {
            values.push_back(step.at(std::pow(10.0, 0.5 * (panel + 0.5 * (node(i) + 1.0)))));
        }
        return values;
    }

    const StepResponse &step;
    std::map<int, std::vector<Field>> panels;
};

// Average over an edge that ended `lag` ago, in panels that grow with the time since its end.
Field edgeAverage(StepTable &table, double lag, double length) {
    if (!(length > 1.0e-6 * lag)) {
        return table.at(lag);
    }
    Rule rule;
    for (double from = 0.0; from < length;) {
        const double to = std::min(length, from + 0.7 * (lag + from));
        addPanels(rule, from, to);
        from = to;
    }
    Field sum = {};
    for (std::size_t i = 0; i < rule.x.size(); ++i) {
        const Field value = table.at(lag + rule.x[i]);
        for (std::size_t c = 0; c < 3; ++c) {
            sum[c] += rule.w[i] / length * value[c];
        }
    }
    return sum;
}

// All edges and repetitions, t after the origin. Alternating sums end with half a term.
Field pulseTrain(StepTable &table, const WindowSet &set, double t) {
    constexpr int terms = 30;
    const double half = set.frequency > 0.0 ? 0.5 / set.frequency : 0.0;
    const bool alternating = set.times.back() - set.times.front() <= 1.00001 * half;
    const double period = alternating ? half : 2.0 * half;
    Field sum = {};
    for (int n = 0; n < (half > 0.0 ? terms : 1); ++n) {
        const double sign = (alternating && n % 2 != 0 ? -1.0 : 1.0) * (n + 1 == terms ? 0.5 : 1.0);
        for (std::size_t i = 0; i + 1 < set.times.size(); ++i) {
            const double fall = set.currents[i] - set.currents[i + 1];
            if (fall != 0.0) {
                const Field value =
                    edgeAverage(table, set.origin - set.times[i + 1] + t + n * period,
                                set.times[i + 1] - set.times[i]);
                for (std::size_t c = 0; c < 3; ++c) {
                    sum[c] += sign * fall * value[c];
                }
            }
        }
    }
    return sum;
}

} // namespace

StepResponse::StepResponse(const LoopGeometry &loop, const Earth &ground, double earliest,
                           double latest)
    : earth(ground), smallestRho(*std::min_element(ground.rho.begin(), ground.rho.end())) {
    const double largestRho = *std::max_element(ground.rho.begin(), ground.rho.end());
    const double extent = std::max(std::fabs(loop.rxX), std::fabs(loop.rxY)) +
                          0.5 * std::hypot(loop.sideX, loop.sideY);
    const double highest = highestWavenumber(smallestRho, earliest);
    Rule rule;
    for (double from = 1.0e-3 * std::sqrt(Mu0 / (largestRho * latest)); from < highest;) {
        const double to = from + std::min(0.6 * from, 6.0 / extent);
        addPanels(rule, from, to);
        from = to;
    }
    for (std::size_t i = 0; i < rule.x.size(); ++i) {
        Field sum =
            loop.coincident ? coincidentKernel(loop, rule.x[i]) : loopKernel(loop, rule.x[i]);
        for (double &value : sum) {
            value *= rule.w[i] * loop.turns * 1.0e9 * Mu0 / (4.0 * Pi);
        }
        lambda.push_back(rule.x[i]);
        kernel.push_back(sum);
    }
}

Field StepResponse::at(double t) const {
    constexpr int M = 14;
    const double r = 2.0 * M / (5.0 * t);
    const double highest = highestWavenumber(smallestRho, t);
    Field result = {};
    for (int k = 0; k < M; ++k) {
        const double angle = k * Pi / M;
        const double cotangent = k == 0 ? 0.0 : 1.0 / std::tan(angle);
        const Complex s = k == 0 ? Complex(r) : r * angle * Complex(cotangent, 1.0);
        const double sigma = angle + (angle * cotangent - 1.0) * cotangent;
        const Complex factor =
            std::exp(s * t) * (k == 0 ? Complex(0.5) : Complex(1.0, sigma)) * (r / M);
        std::array<Complex, 3> F = {};
        for (std::size_t j = 0; j < lambda.size() && lambda[j] < highest; ++j) {
            // 1 + R for what lies below the diffusion's wavenumbers: a constant has no response.
            const Complex R = 1.0 + reflection(earth, lambda[j], s);
            for (std::size_t c = 0; c < 3; ++c) {
                F[c] += kernel[j][c] * R;
            }
        }
        for (std::size_t c = 0; c < 3; ++c) {
            result[c] += (factor * F[c]).real();
        }
    }
    return result;
}

std::vector<Field> windowData(const LoopGeometry &loop, const Earth &earth, const WindowSet &set) {
    const double first = set.lower.front() + set.origin - set.times.back();
    const StepResponse step(loop, earth, 0.3 * first, 100.0 * set.upper.back());
    StepTable table(step);
    std::vector<Field> data;
    for (std::size_t w = 0; w < set.lower.size(); ++w) {
        Rule rule;
        const double length = set.upper[w] - set.lower[w];
        if (length > 0.0) {
            addPanels(rule, set.lower[w], set.upper[w]);
        } else {
            rule = {{set.lower[w]}, {1.0}};
        }
        Field sum = {};
        for (std::size_t i = 0; i < rule.x.size(); ++i) {
            const Field value = pulseTrain(table, set, rule.x[i]);
            for (std::size_t c = 0; c < 3; ++c) {
                sum[c] += value[c] * rule.w[i] / (length > 0.0 ? length : 1.0);
            }
        }
        data.push_back(sum);
    }
    return data;
}

} // namespace keldrin::slow
