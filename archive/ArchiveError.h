#pragma once

#include <stdexcept>
#include <string>

namespace kestrel {

// Why bytes were refused as an archive, or a value could not be archived.
class ArchiveError : public std::runtime_error {
public:
    enum class Kind {
        NotAPropertyList, // neither binary nor XML
        TooLarge, // bytes of the file or of what it expands to
        TooManyObjects,
        TooDeep,
        Cycle,
        Truncated, // a trailer, table or object reaches beyond the file
        BadTrailer,
        BadMarker, // a value of a kind that has no place in an archive
        BadReference, // an object or UID that does not exist
        BadText, // no valid text, or text with a NUL
        DuplicateKey,
        MalformedXml,
        EntityDefinition,
        NotAnArchive, // a property list of something else
        UnsupportedVersion,
        MalformedObject, // a collection, class entry or member not built as archivers build it
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
