#pragma once

#include "archive/Bytes.h"

#include <plist/plist.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

// A property list tree of libplist, which owns every node below its root.
class PropertyList {
public:
    // Throws ArchiveError unless the bytes are a sound binary or XML list: the only way from
    // bytes to libplist.
    [[nodiscard]] static PropertyList fromBytes(ByteView list);

    explicit PropertyList(plist_t root); // takes it over
    [[nodiscard]] plist_t root() const { return m_root.get(); }
    // Gives the root to a tree that will own it.
    [[nodiscard]] plist_t release() { return m_root.release(); }

    // As a binary list.
    [[nodiscard]] Bytes toBinary() const;

private:
    struct Free {
        void operator()(plist_t node) const { plist_free(node); }
    };

    std::unique_ptr<void, Free> m_root;
};

// What libplist says of single nodes, without copies to be freed. The nodes stay the tree's.
namespace PropertyListNode {

[[nodiscard]] std::vector<plist_t> items(plist_t array);
[[nodiscard]] std::vector<std::pair<std::string, plist_t>> members(plist_t dictionary);
[[nodiscard]] std::string string(plist_t node);
[[nodiscard]] ByteView data(plist_t node);

// libplist keeps 64 bits of an integer and cannot be asked which sign they have.
struct Integer {
    std::uint64_t bits = 0;
    bool isUnsigned = false; // true only beyond the largest signed integer
};
[[nodiscard]] Integer integer(plist_t node);
[[nodiscard]] PropertyList makeInteger(Integer value);

} // namespace PropertyListNode

} // namespace kestrel
