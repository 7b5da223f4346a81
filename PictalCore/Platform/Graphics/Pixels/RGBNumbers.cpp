#include "PictalCore/Platform/Graphics/Pixels/RGBNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace pictal::detail {

namespace {

using Vector = ColorComponents;
/// Rows of three.
using Matrix = std::array<Vector, 3>;

double lightOf(double component, const ToneCurve& curve) {
    if (curve.kind == ToneCurve::Kind::power)
        return std::copysign(std::pow(std::abs(component), curve.exponent), component);
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double componentOf(double light, const ToneCurve& curve) {
    if (curve.kind == ToneCurve::Kind::power) return std::pow(light, 1 / curve.exponent);
    return light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

Vector product(const Matrix& matrix, const Vector& vector) {
    Vector result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t i = 0; i < 3; ++i)
            result[row] += matrix[row][i] * vector[i];
    return result;
}

/// By the adjugate; the primaries of the spaces above are far from one line.
Matrix inverse(const Matrix& m) {
    const auto cofactor = [&](std::size_t row, std::size_t column) {
        const std::size_t r1 = (row + 1) % 3;
        const std::size_t r2 = (row + 2) % 3;
        const std::size_t c1 = (column + 1) % 3;
        const std::size_t c2 = (column + 2) % 3;
        return m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
    };
    const double determinant =
        m[0][0] * cofactor(0, 0) + m[0][1] * cofactor(0, 1) + m[0][2] * cofactor(0, 2);
    Matrix result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row][column] = cofactor(column, row) / determinant;
    return result;
}

Vector tristimulus(Chromaticity point) {
    return {point.x / point.y, 1, (1 - point.x - point.y) / point.y};
}

/// From light to CIE XYZ: the primaries' columns, scaled so that together they make the white
/// (SMPTE RP 177).
Matrix toXYZ(const Chromaticities& c) {
    Matrix primaries{};
    const std::array columns{tristimulus(c.red), tristimulus(c.green), tristimulus(c.blue)};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t i = 0; i < 3; ++i)
            primaries[row][i] = columns[i][row];
    const Vector scale = product(inverse(primaries), tristimulus(c.white));
    for (Vector& row : primaries)
        for (std::size_t i = 0; i < 3; ++i)
            row[i] *= scale[i];
    return primaries;
}

}  // namespace

ColorComponents converted(const ColorComponents& color, const RGBNumbers& from,
                          const RGBNumbers& to) {
    Vector light = color;
    for (double& component : light)
        component = lightOf(component, from.curve);
    light = product(inverse(toXYZ(to.chromaticities)), product(toXYZ(from.chromaticities), light));
    for (double& component : light)
        component = componentOf(std::clamp(component, 0.0, 1.0), to.curve);
    return light;
}

}  // namespace pictal::detail
