#pragma once

#include <cmath>

namespace Quorlin {

/// A point in the coordinates of a page, in points (1/72 inch).
struct Point
{
    double x = 0;
    double y = 0;
};

/// The six numbers of a PDF matrix: (x, y) becomes (a x + c y + e, b x + d y + f).
struct Matrix
{
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    [[nodiscard]] Point map(Point p) const
    {
        return {a * p.x + c * p.y + e, b * p.x + d * p.y + f};
    }

    /// The matrix that applies this one first and then @p next.
    [[nodiscard]] Matrix then(const Matrix &next) const
    {
        return {a * next.a + b * next.c,          a * next.b + b * next.d,
                c * next.a + d * next.c,          c * next.b + d * next.d,
                e * next.a + f * next.c + next.e, e * next.b + f * next.d + next.f};
    }

    [[nodiscard]] bool invertible() const
    {
        const double determinant = a * d - b * c;
        return std::isfinite(determinant) && std::abs(determinant) > 1e-12;
    }

    /// The inverse; only for a matrix that is invertible().
    [[nodiscard]] Matrix inverted() const
    {
        const double determinant = a * d - b * c;
        return {d / determinant,
                -b / determinant,
                -c / determinant,
                a / determinant,
                (c * f - d * e) / determinant,
                (b * e - a * f) / determinant};
    }
};

} // namespace Quorlin
