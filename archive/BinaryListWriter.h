#pragma once

#include "archive/Bytes.h"

#include <plist/plist.h>

#include <map>
#include <string>
#include <vector>

namespace kestrel {

// Writes a property list tree in the binary format. Equal scalars are written once. libplist finds
// them with a hash table whose chains the content of a file can make as long as it likes; here the
// time grows with the size of the list.
class BinaryListWriter {
public:
    [[nodiscard]] Bytes write(plist_t root);

private:
    using Reference = std::size_t;
    struct Object {
        Bytes bytes; // for a container, its marker and count alone
        std::vector<Reference> references;
    };

    Reference add(plist_t node);
    Reference addScalar(Bytes bytes);
    Reference addArray(plist_t array);
    Reference addDictionary(plist_t dictionary);

    std::vector<Object> m_objects;
    std::map<std::string, Reference> m_scalars; // by their bytes
};

} // namespace kestrel
