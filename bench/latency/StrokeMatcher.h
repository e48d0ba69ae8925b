#pragma once

#include "bench/latency/Buttons.h"

#include <optional>
#include <set>

namespace kestrel::bench {

// Tells which stroke of the steady stream each received one is, and from that what was lost or came
// out of order. A received stroke is taken for the nearest one that it can be, either skipped
// before or still to come; strokes a whole turn of the buttons apart look the same.
class StrokeMatcher {
public:
    // The number of the sent stroke, counted from 0; missing when no such stroke is awaited.
    // `sent` is how many strokes of the stream have been sent by now.
    std::optional<std::size_t> receive(const Stroke& stroke, std::size_t sent);

    [[nodiscard]] std::size_t received() const { return m_received; }
    [[nodiscard]] std::size_t outOfOrder() const { return m_outOfOrder; }
    [[nodiscard]] std::size_t unexpected() const { return m_unexpected; }

private:
    static constexpr std::size_t Turn = 2 * Buttons.size();

    std::size_t m_next = 0;
    std::set<std::size_t> m_skipped; // sent before m_next and not received
    std::size_t m_received = 0;
    std::size_t m_outOfOrder = 0;
    std::size_t m_unexpected = 0;
};

} // namespace kestrel::bench
