#include "archive/ArchiveGraph.h"

#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveError.h"
#include "archive/ArchiveLimits.h"
#include "archive/ArchiveObject.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace kestrel {

namespace {

using Kind = ArchiveError::Kind;

std::size_t sizeOf(const QString& text)
{
    return static_cast<std::size_t>(text.size()) * sizeof(QChar);
}

class GraphWalk {
public:
    struct Extent { // the size of a value with everything that it contains
        std::size_t values = 1;
        std::size_t textBytes = 0;
        std::size_t height = 0;
    };

    Extent measure(const ArchiveValue& value, std::size_t depth);

private:
    Extent measureContent(const ArchiveValue& value, std::size_t depth);
    void add(Extent& whole, const ArchiveValue& part, std::size_t depth);
    static void check(const Extent& extent, std::size_t depth);

    // No value while the container is being measured, so that a cycle is noticed.
    std::unordered_map<const void*, std::optional<Extent>> m_measured;
};

const void* containerOf(const ArchiveValue& value)
{
    switch (value.type()) {
    case ArchiveValue::Type::Array:
        return value.array().get();
    case ArchiveValue::Type::Dictionary:
        return value.dictionary().get();
    case ArchiveValue::Type::Object:
        return value.object().get();
    default:
        return nullptr;
    }
}

void GraphWalk::check(const Extent& extent, std::size_t depth)
{
    if (depth + extent.height > ArchiveLimits::Depth)
        throw ArchiveError(Kind::TooDeep, "values nested too deep");
    if (extent.values > ArchiveLimits::Values)
        throw ArchiveError(Kind::TooManyObjects, "archive of too many values");
    if (extent.textBytes > ArchiveLimits::TextBytes)
        throw ArchiveError(Kind::TooLarge, "archive of too much text and data");
}

GraphWalk::Extent GraphWalk::measure(const ArchiveValue& value, std::size_t depth)
{
    const void* container = containerOf(value);
    if (!container) {
        Extent extent;
        extent.textBytes = sizeOf(value.text()) + static_cast<std::size_t>(value.data().size());
        check(extent, depth);
        return extent;
    }
    const auto [place, isNew] = m_measured.try_emplace(container);
    if (isNew) {
        if (depth == ArchiveLimits::Depth)
            throw ArchiveError(Kind::TooDeep, "values nested too deep");
        const Extent extent = measureContent(value, depth);
        m_measured[container] = extent;
        return extent;
    }
    if (!place->second)
        throw ArchiveError(Kind::Cycle, "value that holds itself");
    check(*place->second, depth);
    return *place->second;
}

GraphWalk::Extent GraphWalk::measureContent(const ArchiveValue& value, std::size_t depth)
{
    Extent whole;
    whole.height = 1;
    if (const auto array = value.array()) {
        for (const ArchiveValue& element : *array)
            add(whole, element, depth);
    } else if (const auto dictionary = value.dictionary()) {
        for (const ArchiveDictionary::Entry& entry : *dictionary) {
            add(whole, entry.key, depth);
            add(whole, entry.value, depth);
        }
    } else if (const auto object = value.object()) {
        if (object->members().size() >= ArchiveLimits::DictionaryKeys)
            throw ArchiveError(Kind::TooManyObjects, "object of too many members");
        for (const QString& name : object->classes())
            add(whole, name, depth);
        for (const ArchiveObject::Member& member : object->members()) {
            add(whole, member.name, depth);
            add(whole, member.value, depth);
        }
    }
    check(whole, depth);
    return whole;
}

void GraphWalk::add(Extent& whole, const ArchiveValue& part, std::size_t depth)
{
    const Extent extent = measure(part, depth + 1);
    whole.values += extent.values;
    whole.textBytes += extent.textBytes;
    whole.height = std::max(whole.height, extent.height + 1);
    check(whole, depth);
}

} // namespace

void checkArchiveGraph(const ArchiveValue& root)
{
    (void)GraphWalk().measure(root, 0);
}

} // namespace kestrel
