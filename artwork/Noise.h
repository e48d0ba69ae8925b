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

// The pixels of one line from left to right, -1 to 1. The value changes smoothly over `cell`
// pixels.
class StreakLine {
public:
    constexpr StreakLine(int line, int cell, std::uint32_t seed)
        : m_line(line)
        , m_cell(cell)
        , m_seed(seed)
    {
        const int shift
            = static_cast<int>(scramble(static_cast<std::uint32_t>(line) ^ seed) & 0x3FFU);
        m_index = shift / cell;
        m_within = shift % cell;
        m_from = noiseAt(m_index, m_line, m_seed);
        m_to = noiseAt(m_index + 1, m_line, m_seed);
    }

    [[nodiscard]] constexpr double next()
    {
        const double t = static_cast<double>(m_within) / m_cell;
        const double eased = t * t * (3.0 - 2.0 * t);
        const double value = m_from * (1.0 - eased) + m_to * eased;
        if (++m_within == m_cell) {
            m_within = 0;
            ++m_index;
            m_from = m_to;
            m_to = noiseAt(m_index + 1, m_line, m_seed);
        }
        return value;
    }

private:
    int m_line;
    int m_cell;
    std::uint32_t m_seed;
    int m_index = 0;
    int m_within = 0;
    double m_from = 0;
    double m_to = 0;
};

} // namespace kestrel::artwork
