#pragma once

#include "bench/latency/Buttons.h"

#include <optional>
#include <set>

namespace kestrel::bench {

// Finds out which stroke of the steady stream each received stroke is, and so which strokes were
// lost or came out of order. A received stroke counts as the nearest matching one, which was
// skipped before or is still to come. Strokes that are a whole turn of the buttons apart look the
// same.
class StrokeMatcher {
public:
    // Returns the number of the sent stroke, counted from 0. No value when no such stroke is
    // awaited. `sent` is the number of strokes of the stream sent so far.
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
