#pragma once

#include "archive/ArchiveValue.h"
#include "archive/PropertyList.h"

#include <QStringList>

#include <unordered_map>
#include <vector>

namespace kestrel {

// Turns the property list of a keyed archive into values. Throws ArchiveError.
class ArchiveDecoder {
public:
    explicit ArchiveDecoder(const PropertyList& list); // the list outlives the decoder
    [[nodiscard]] ArchiveValue root();

private:
    enum class State { Unseen, Open, Decoded };
    struct Slot { // one entry of "$objects"
        plist_t node = nullptr;
        State state = State::Unseen;
        ArchiveValue value;
    };

    ArchiveValue decode(std::uint64_t uid);
    ArchiveValue decodeNode(plist_t node);
    ArchiveValue decodeObject(plist_t node);
    ArchiveValue decodeDictionary(plist_t node);
    ArchiveValue decodeGeneric(plist_t node, const QStringList& classes);
    ArchiveValue decodeMember(plist_t node, const char* name);
    ArchiveValue decodeReference(plist_t node);
    std::vector<ArchiveValue> decodeReferences(plist_t array);
    const QStringList& classesOf(plist_t object);

    plist_t m_top = nullptr;
    std::vector<Slot> m_slots;
    std::unordered_map<std::uint64_t, QStringList> m_classes; // by UID of the class entry
    std::size_t m_depth = 0;
};

} // namespace kestrel
