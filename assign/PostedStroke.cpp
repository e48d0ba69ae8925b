#include "assign/PostedStroke.h"

namespace kestrel {

std::optional<PostedStroke> postedStroke(const ArchiveArray& entry, std::size_t offset)
{
    if (offset + ShortcutRecordSize > entry.size()
        || entry[offset + ShortcutRecord::Text].text().isEmpty())
        return {};
    const auto flags
        = static_cast<ModifierFlags>(entry[offset + ShortcutRecord::Modifiers].toInt32());
    return PostedStroke { flags & Modifier::Used,
        entry[offset + ShortcutRecord::KeyCode].toUInt16() };
}

} // namespace kestrel
