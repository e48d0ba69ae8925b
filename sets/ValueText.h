#pragma once

#include "archive/ArchiveObject.h"
#include "sets/JsonValue.h"

#include <map>
#include <optional>
#include <unordered_map>

namespace kestrel {

// How values of an archive are written as JSON, so that exactly the same values can be read again:
//
//     nil, boolean, string, array   null, true, "…", […]
//     integer                       a number; {"$integer": "…"} beyond ±2^53
//     real                          {"$real": "1.5"}
//     data                          {"$data": base64}
//     dictionary                    {"$dictionary": [[key, value], …]}
//     object                        {"$class": [name, …], "$members": [{"name", "value"}, …]}
//     a container of several places {"$id": 1, "$value": …} and from then on {"$ref": 1}
//
// docs/set.schema.json describes the same.
namespace ValueText {
inline const QString Integer = QStringLiteral("$integer");
inline const QString Real = QStringLiteral("$real");
inline const QString Data = QStringLiteral("$data");
inline const QString Dictionary = QStringLiteral("$dictionary");
inline const QString Class = QStringLiteral("$class");
inline const QString Members = QStringLiteral("$members");
inline const QString Id = QStringLiteral("$id");
inline const QString Value = QStringLiteral("$value");
inline const QString Ref = QStringLiteral("$ref");
inline const QString Name = QStringLiteral("name");
inline const QString MemberValue = QStringLiteral("value");
inline const QString Inline = QStringLiteral("inline"); // of a member, if it is true

inline constexpr qint64 LargestPlain = qint64(1) << 53;
} // namespace ValueText

// Writes values of one archive. The archive outlives the writer and holds no cycle.
class ValueWriter {
public:
    explicit ValueWriter(const ArchiveValue& root);

    [[nodiscard]] JsonValue json(const ArchiveValue& value);
    [[nodiscard]] JsonValue json(const ArchiveObject::Member& member);
    // True for a container that the archive holds in several places.
    [[nodiscard]] bool isShared(const ArchiveValue& value) const;

private:
    void count(const ArchiveValue& value);
    [[nodiscard]] JsonValue content(const ArchiveValue& value);

    std::unordered_map<const void*, int> m_places; // of each container
    std::unordered_map<const void*, int> m_ids; // of those written already
};

// Reads values of one archive, in the order in which they were written. Throws TextError.
class ValueReader {
public:
    [[nodiscard]] ArchiveValue value(const JsonValue& json);
    [[nodiscard]] ArchiveObject::Member readMember(const JsonValue& json);

private:
    [[nodiscard]] ArchiveValue tagged(const JsonValue& json);
    [[nodiscard]] ArchiveValue identified(const JsonValue& json);
    [[nodiscard]] ArchiveValue dictionary(const JsonValue& pairs);
    [[nodiscard]] ArchiveValue object(const JsonValue& json);

    std::map<qint64, std::optional<ArchiveValue>> m_values; // by identity; empty until read
};

// Null if the value is no container.
[[nodiscard]] const void* identityOf(const ArchiveValue& value);

// True for scalars of the same type and bits, and for the same container.
[[nodiscard]] bool isIdentical(const ArchiveValue& left, const ArchiveValue& right);

// Throw TextError if the JSON is something else than is asked for.
namespace JsonCheck {
[[noreturn]] void fail(const JsonValue& json, const QString& problem);
void expect(const JsonValue& json, JsonValue::Type type, const char* name);
// An object that has only these members.
void expectMembers(const JsonValue& json, std::initializer_list<QStringView> names);
[[nodiscard]] const JsonValue& member(const JsonValue& object, const QString& name);
[[nodiscard]] QString string(const JsonValue& json);
[[nodiscard]] ArchiveValue integer(const JsonValue& json);
} // namespace JsonCheck

} // namespace kestrel
