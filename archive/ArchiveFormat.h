#pragma once

#include <cstdint>

// The names that NSKeyedArchiver writes.
namespace kestrel::ArchiveFormat {

inline constexpr char Archiver[] = "$archiver";
inline constexpr char ArchiverName[] = "NSKeyedArchiver";
inline constexpr char VersionKey[] = "$version";
inline constexpr std::uint64_t Version = 100000;
inline constexpr char Top[] = "$top";
inline constexpr char Root[] = "root";
inline constexpr char Objects[] = "$objects";
inline constexpr char Null[] = "$null"; // the first object; a reference to it means nil
inline constexpr char Class[] = "$class";
inline constexpr char ClassName[] = "$classname";
inline constexpr char Classes[] = "$classes";
inline constexpr char XmlUid[] = "CF$UID";

} // namespace kestrel::ArchiveFormat
