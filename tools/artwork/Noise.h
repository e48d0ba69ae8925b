#pragma once

#include <cstdint>

namespace kestrel::artwork {

// Computes repeatable noise: the same place always gives the same value, on every machine.
[[nodiscard]] constexpr std::uint32_t scramble(std::uint32_t value)
{
    value ^= value >> 16;
    value *= 0x7FEB352DU;
    value ^= value >> 15;
    value *= 0x846CA68BU;
    value ^= value >> 16;
    return value;
}

// -1 to 1.
[[nodiscard]] constexpr double noiseAt(int x, int y, std::uint32_t seed)
{
    const auto mixed = scramble(scramble(static_cast<std::uint32_t>(x) + seed)
        ^ static_cast<std::uint32_t>(y) * 0x9E3779B9U);
    return static_cast<double>(mixed & 0xFFFFU) / 32767.5 - 1.0;
}

// -1 to 1. The value changes smoothly over `cell` pixels along a line.
[[nodiscard]] constexpr double streakAt(int x, int line, int cell, std::uint32_t seed)
{
    const int shift = static_cast<int>(scramble(static_cast<std::uint32_t>(line) ^ seed) & 0x3FFU);
    const int index = (x + shift) / cell;
    const double t = static_cast<double>((x + shift) % cell) / cell;
    const double eased = t * t * (3.0 - 2.0 * t);
    return noiseAt(index, line, seed) * (1.0 - eased) + noiseAt(index + 1, line, seed) * eased;
}

} // namespace kestrel::artwork
