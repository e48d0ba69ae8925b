#pragma once

#include <stdexcept>
#include <string>

namespace kestrel {

// Says why bytes were refused as an archive, or why a value cannot be archived.
class ArchiveError : public std::runtime_error {
public:
    enum class Kind {
        NotAPropertyList, // neither binary nor XML
        TooLarge, // the file, or what it expands to
        TooManyObjects,
        TooDeep,
        Cycle,
        Truncated, // a trailer, table or object reaches beyond the file
        BadTrailer,
        BadMarker, // a value of a type that archives do not have
        BadReference, // an object or UID that does not exist
        BadText, // invalid UTF-8 or UTF-16, or text with a NUL
        DuplicateKey,
        MalformedXml,
        EntityDefinition,
        NotAnArchive, // a property list that is no keyed archive
        UnsupportedVersion,
        MalformedObject, // a collection, class entry or member that no archiver writes like this
    };

    ArchiveError(Kind kind, const std::string& text)
        : std::runtime_error(text)
        , m_kind(kind)
    {
    }

    [[nodiscard]] Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

} // namespace kestrel
