#include "tests/sets/SchemaCheck.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace kestrel::test {

namespace {
using JsonType = JsonValue::Type;

std::string at(const JsonValue& value, const std::string& problem)
{
    return std::to_string(value.position.line) + ':' + std::to_string(value.position.column) + ' '
        + problem;
}

bool hasType(const JsonValue& value, const JsonValue& rule)
{
    if (rule.is(JsonType::Array))
        return std::any_of(rule.items.begin(), rule.items.end(),
            [&](const JsonValue& choice) { return hasType(value, choice); });
    const std::pair<const char*, JsonType> names[]
        = { { "null", JsonType::Null }, { "boolean", JsonType::Boolean },
              { "integer", JsonType::Number }, { "string", JsonType::String },
              { "array", JsonType::Array }, { "object", JsonType::Object } };
    return std::any_of(std::begin(names), std::end(names), [&](const auto& name) {
        return rule.text == QLatin1String(name.first) && value.is(name.second)
            && (!value.is(JsonType::Number) || !value.text.contains(u'.'));
    });
}

bool isOneOf(const JsonValue& value, const JsonValue& choices)
{
    return std::any_of(choices.items.begin(), choices.items.end(),
        [&](const JsonValue& choice) { return jsonLine(choice) == jsonLine(value); });
}
} // namespace

const JsonValue& SchemaCheck::definition(const QString& reference) const
{
    const JsonValue* const found
        = m_schema.member(u"$defs")->member(QStringView(reference).sliced(8)); // "#/$defs/"
    if (!found)
        throw std::runtime_error("the schema does not define " + reference.toStdString());
    return *found;
}

std::string SchemaCheck::fault(const JsonValue& value, const JsonValue& schema) const
{
    for (const JsonMember& keyword : schema.members) {
        if (std::string fault = keywordFault(value, keyword, schema); !fault.empty())
            return fault;
    }
    return {};
}

std::string SchemaCheck::keywordFault(
    const JsonValue& value, const JsonMember& keyword, const JsonValue& schema) const
{
    const QString& name = keyword.name;
    const JsonValue& rule = keyword.value;
    const auto unless = [&](bool holds) { return holds ? "" : at(value, name.toStdString()); };
    if (name == u"$schema" || name == u"$defs" || name == u"title" || name == u"description"
        || name == u"additionalProperties")
        return {};
    if (name == u"$ref")
        return fault(value, definition(rule.text));
    if (name == u"type")
        return unless(hasType(value, rule));
    if (name == u"enum")
        return unless(isOneOf(value, rule));
    if (name == u"required")
        return unless(std::all_of(rule.items.begin(), rule.items.end(),
            [&](const JsonValue& member) { return value.member(member.text); }));
    if (name == u"properties")
        return propertiesFault(value, schema);
    if (name == u"items")
        return itemsFault(value, rule);
    if (name == u"minItems")
        return unless(value.items.size() >= rule.text.toULongLong());
    if (name == u"maxItems")
        return unless(value.items.size() <= rule.text.toULongLong());
    if (name == u"anyOf")
        return anyFault(value, rule);
    if (name == u"pattern")
        return unless(QRegularExpression(rule.text).match(value.text).hasMatch());
    return "the schema has the unknown keyword " + name.toStdString();
}

// Each object of the schema says "additionalProperties": false.
std::string SchemaCheck::propertiesFault(const JsonValue& value, const JsonValue& schema) const
{
    if (!schema.member(u"additionalProperties"))
        return "the schema has an object that may have any member";
    const JsonValue& properties = *schema.member(u"properties");
    for (const JsonMember& member : value.members) {
        const JsonValue* const rule = properties.member(member.name);
        if (!rule)
            return at(member.value, "unknown member " + member.name.toStdString());
        if (std::string problem = fault(member.value, *rule); !problem.empty())
            return problem;
    }
    return {};
}

std::string SchemaCheck::itemsFault(const JsonValue& value, const JsonValue& items) const
{
    for (const JsonValue& item : value.items) {
        if (std::string problem = fault(item, items); !problem.empty())
            return problem;
    }
    return {};
}

std::string SchemaCheck::anyFault(const JsonValue& value, const JsonValue& choices) const
{
    std::string problem;
    for (const JsonValue& choice : choices.items) {
        problem = fault(value, choice);
        if (problem.empty())
            return {};
    }
    return at(value, "anyOf");
}

} // namespace kestrel::test
