#include "archive/ArchiveArray.h"

namespace kestrel {

const ArchiveValue& ArchiveArray::at(std::size_t index) const
{
    static const ArchiveValue null;
    return index < m_values.size() ? m_values[index] : null;
}

void ArchiveArray::replace(std::size_t index, ArchiveValue value)
{
    if (index < m_values.size())
        m_values[index] = std::move(value);
}

} // namespace kestrel
