#pragma once

#include "sets/JsonValue.h"

#include <string>

namespace kestrel::test {

// Checks JSON with the part of JSON Schema that docs/set.schema.json uses. A keyword that it does
// not know is a fault of the schema.
class SchemaCheck {
public:
    explicit SchemaCheck(JsonValue schema)
        : m_schema(std::move(schema))
    {
    }

    // What is wrong with the value, and where; empty if it is valid.
    [[nodiscard]] std::string fault(const JsonValue& value) const { return fault(value, m_schema); }

private:
    std::string fault(const JsonValue& value, const JsonValue& schema) const;
    std::string keywordFault(
        const JsonValue& value, const JsonMember& keyword, const JsonValue& schema) const;
    std::string propertiesFault(const JsonValue& value, const JsonValue& schema) const;
    std::string itemsFault(const JsonValue& value, const JsonValue& items) const;
    std::string anyFault(const JsonValue& value, const JsonValue& choices) const;
    const JsonValue& definition(const QString& reference) const;

    JsonValue m_schema;
};

} // namespace kestrel::test
