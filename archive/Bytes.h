#pragma once

#include <QByteArray>

#include <cstdint>
#include <span>
#include <vector>

namespace kestrel {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

// Valid as long as `bytes` is.
[[nodiscard]] inline ByteView viewOf(const QByteArray& bytes)
{
    return { reinterpret_cast<const std::uint8_t*>(bytes.constData()),
        static_cast<std::size_t>(bytes.size()) };
}

} // namespace kestrel
