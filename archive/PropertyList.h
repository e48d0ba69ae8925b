#pragma once

#include "archive/ArchiveLimits.h"
#include "archive/Bytes.h"

#include <plist/plist.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

// Owns a property list tree of libplist.
class PropertyList {
public:
    // Parses a binary or XML list; throws ArchiveError unless it is sound and has at most
    // `maxObjects`. libplist gets bytes in no other way.
    [[nodiscard]] static PropertyList fromBytes(
        ByteView list, std::size_t maxObjects = ArchiveLimits::FileObjects);

    explicit PropertyList(plist_t root); // takes ownership
    [[nodiscard]] plist_t root() const { return m_root.get(); }
    // Releases the root to another tree, which owns it from then on.
    [[nodiscard]] plist_t release() { return m_root.release(); }

    // The tree as a binary list.
    [[nodiscard]] Bytes toBinary() const;

private:
    struct Free {
        void operator()(plist_t node) const { plist_free(node); }
    };

    std::unique_ptr<void, Free> m_root;
};

// Reads single nodes of libplist without copies that must be freed. The tree keeps the nodes.
namespace PropertyListNode {

[[nodiscard]] std::vector<plist_t> items(plist_t array);
[[nodiscard]] std::vector<std::pair<std::string, plist_t>> members(plist_t dictionary);
[[nodiscard]] std::string string(plist_t node);
[[nodiscard]] ByteView data(plist_t node);

// The 64 bits of an integer node. libplist does not tell whether they are signed.
struct Integer {
    std::uint64_t bits = 0;
    bool isUnsigned = false; // true only for numbers above the largest signed integer
};
[[nodiscard]] Integer integer(plist_t node);
[[nodiscard]] PropertyList makeInteger(Integer value);

} // namespace PropertyListNode

} // namespace kestrel
