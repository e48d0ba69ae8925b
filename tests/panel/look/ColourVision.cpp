#include "tests/panel/look/ColourVision.h"

#include "tests/panel/look/Luminance.h"

#include <array>
#include <numbers>

namespace kestrel::test {

namespace {
using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

constexpr Matrix NoRed { { { 0.152286, 1.052583, -0.204868 }, { 0.114503, 0.786281, 0.099216 },
    { -0.003882, -0.048116, 1.051998 } } };
constexpr Matrix NoGreen { { { 0.367322, 0.860646, -0.227968 }, { 0.280085, 0.672501, 0.047413 },
    { -0.011820, 0.042940, 0.968881 } } };
constexpr Matrix NoBlue { { { 1.255528, -0.076749, -0.178779 }, { -0.078411, 0.930809, 0.147602 },
    { 0.004733, 0.691367, 0.303900 } } };
constexpr Matrix ToXyz { { { 0.4124564, 0.3575761, 0.1804375 }, { 0.2126729, 0.7151522, 0.0721750 },
    { 0.0193339, 0.1191920, 0.9503041 } } };

Triple product(const Matrix& matrix, const Triple& vector)
{
    Triple result {};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            result[row] += matrix[row][column] * vector[column];
    }
    return result;
}

Triple linearOf(const QColor& colour)
{
    return { linear(colour.red()), linear(colour.green()), linear(colour.blue()) };
}

int encoded(double light)
{
    const double value = std::clamp(light, 0.0, 1.0);
    const double channel
        = value <= 0.0031308 ? 12.92 * value : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(channel * 255));
}

struct Lab {
    double l;
    double a;
    double b;
};

Lab labOf(const QColor& colour)
{
    const Triple xyz = product(ToXyz, linearOf(colour));
    constexpr Triple White { 0.95047, 1.0, 1.08883 };
    Triple f {};
    for (std::size_t i = 0; i < 3; ++i) {
        const double t = xyz[i] / White[i];
        f[i] = t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    }
    return { 116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2]) };
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

// The hue of a colour in degrees, 0 to 360.
double hue(double a, double b)
{
    const double degrees = std::atan2(b, a) * 180 / std::numbers::pi;
    return degrees < 0 ? degrees + 360 : degrees;
}
} // namespace

QColor seenBy(ColourVision vision, const QColor& colour)
{
    if (vision == ColourVision::Usual)
        return colour;
    const Matrix& matrix = vision == ColourVision::NoRedCones ? NoRed
        : vision == ColourVision::NoGreenCones                ? NoGreen
                                                              : NoBlue;
    const Triple seen = product(matrix, linearOf(colour));
    return { encoded(seen[0]), encoded(seen[1]), encoded(seen[2]) };
}

double difference(const QColor& left, const QColor& right)
{
    const Lab first = labOf(left);
    const Lab second = labOf(right);
    const double meanChroma = (std::hypot(first.a, first.b) + std::hypot(second.a, second.b)) / 2;
    const auto saturation = [](double chroma) {
        const double power = std::pow(chroma, 7);
        return std::sqrt(power / (power + std::pow(25.0, 7)));
    };
    const double stretch = 1 + 0.5 * (1 - saturation(meanChroma));
    const double chroma1 = std::hypot(first.a * stretch, first.b);
    const double chroma2 = std::hypot(second.a * stretch, second.b);
    const double hue1 = hue(first.a * stretch, first.b);
    const double hue2 = hue(second.a * stretch, second.b);
    double turn = hue2 - hue1;
    double meanHue = (hue1 + hue2) / 2;
    if (std::abs(turn) > 180) {
        turn += turn > 0 ? -360 : 360;
        meanHue += meanHue < 180 ? 180 : -180;
    }
    const double lightness = second.l - first.l;
    const double chroma = chroma2 - chroma1;
    const double hueDistance = 2 * std::sqrt(chroma1 * chroma2) * std::sin(radians(turn / 2));
    const double meanLight = std::pow((first.l + second.l) / 2 - 50, 2);
    const double mean = (chroma1 + chroma2) / 2;
    const double t = 1 - 0.17 * std::cos(radians(meanHue - 30))
        + 0.24 * std::cos(radians(2 * meanHue)) + 0.32 * std::cos(radians(3 * meanHue + 6))
        - 0.20 * std::cos(radians(4 * meanHue - 63));
    const double sl = 1 + 0.015 * meanLight / std::sqrt(20 + meanLight);
    const double sc = 1 + 0.045 * mean;
    const double sh = 1 + 0.015 * mean * t;
    const double rotation = -2 * saturation(mean)
        * std::sin(radians(60 * std::exp(-std::pow((meanHue - 275) / 25, 2))));
    const double dl = lightness / sl;
    const double dc = chroma / sc;
    const double dh = hueDistance / sh;
    return std::sqrt(dl * dl + dc * dc + dh * dh + rotation * dc * dh);
}

} // namespace kestrel::test
