#include "bench/latency/StrokeMatcher.h"

namespace kestrel::bench {

std::optional<std::size_t> StrokeMatcher::receive(const Stroke& stroke, std::size_t sent)
{
    for (std::size_t distance = 0; distance < Turn; ++distance) {
        const std::size_t ahead = m_next + distance;
        if (ahead < sent && strokeOfStream(ahead) == stroke) {
            while (m_next < ahead)
                m_skipped.insert(m_skipped.end(), m_next++);
            ++m_next;
            ++m_received;
            return ahead;
        }
        if (distance > m_next)
            continue;
        const std::size_t late = m_next - distance;
        if (strokeOfStream(late) == stroke && m_skipped.erase(late) > 0) {
            ++m_received;
            ++m_outOfOrder;
            return late;
        }
    }
    ++m_unexpected;
    return {};
}

} // namespace kestrel::bench
