#include "PictalCore/Platform/Graphics/Kernels/Resample.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace pictal::kernels {

namespace {

/// The cubic that passes through its points with the slope between their neighbours.
double catmullRom(double distance) {
    const double x = std::abs(distance);
    if (x < 1) return (1.5 * x - 2.5) * x * x + 1;
    if (x < 2) return ((-0.5 * x + 2.5) * x - 4) * x + 2;
    return 0;
}

/// Pixels of the source and the weight of each, to be scaled to a sum of 1.
struct Window {
    std::int64_t first = 0;
    std::vector<double> weights;
};

/// The whole number, kept inside 0…size − 1.
std::int64_t inside(double place, std::int64_t size) {
    return static_cast<std::int64_t>(std::clamp(place, 0.0, static_cast<double>(size - 1)));
}

void cubicWindow(double center, double width, std::int64_t size, Window& window) {
    const double middle = std::clamp(center, 0.0, static_cast<double>(size));
    window.first = inside(std::ceil(middle - 2 * width - 0.5), size);
    const std::int64_t last = inside(std::floor(middle + 2 * width - 0.5), size);
    for (std::int64_t i = window.first; i <= last; ++i)
        window.weights.push_back(catmullRom((static_cast<double>(i) + 0.5 - middle) / width));
}

void meanWindow(double from, double to, std::int64_t size, Window& window) {
    window.first = inside(std::floor(from), size);
    const std::int64_t last = std::max(window.first, inside(std::ceil(to) - 1, size));
    for (std::int64_t i = window.first; i <= last; ++i) {
        const auto left = static_cast<double>(i);
        const double shared = std::min(left + 1, to) - std::max(left, from);
        window.weights.push_back(std::max(shared, 0.0));
    }
    // Beyond the source nothing is shared: its last pixel stands for it.
    if (std::ranges::all_of(window.weights, [](double weight) { return weight == 0; }))
        window.weights.assign(1, 1.0);
}

/// Weights that are 0 at either end cost time and do nothing.
void trim(Window& window) {
    const auto counts = [](double weight) { return weight != 0; };
    auto& weights = window.weights;
    weights.erase(std::find_if(weights.rbegin(), weights.rend(), counts).base(), weights.end());
    const auto start = std::ranges::find_if(weights, counts);
    window.first += start - weights.begin();
    weights.erase(weights.begin(), start);
}

}  // namespace

Taps tapsOf(const ScaledAxis& axis, Shrinking shrinking, std::int64_t size, std::int64_t first,
            std::int64_t count) {
    const bool isMean = shrinking == Shrinking::mean && std::abs(axis.step) > 1;
    Taps taps;
    taps.windows.reserve(static_cast<std::size_t>(count));
    Window window;
    for (std::int64_t i = first; i < first + count; ++i) {
        window.weights.clear();
        const auto at = static_cast<double>(i);
        if (isMean) {
            const auto [from, to] =
                std::minmax({axis.start + at * axis.step, axis.start + (at + 1) * axis.step});
            meanWindow(from, to, size, window);
        } else {
            cubicWindow(axis.start + (at + 0.5) * axis.step, std::max(std::abs(axis.step), 1.0),
                        size, window);
        }
        trim(window);
        taps.windows.push_back(
            {static_cast<std::size_t>(window.first), window.weights.size(), taps.weights.size()});
        const double sum = std::accumulate(window.weights.begin(), window.weights.end(), 0.0);
        for (const double weight : window.weights)
            taps.weights.push_back(static_cast<float>(weight / sum));
    }
    return taps;
}

}  // namespace pictal::kernels
