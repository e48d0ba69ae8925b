#include "sets/JsonValue.h"

#include <algorithm>

namespace kestrel {

TextError::TextError(TextPosition position, const QString& problem)
    : std::runtime_error(problem.toStdString())
    , m_position(position)
{
}

JsonValue JsonValue::ofBoolean(bool value)
{
    JsonValue json;
    json.type = Type::Boolean;
    json.boolean = value;
    return json;
}

JsonValue JsonValue::ofNumber(qint64 value)
{
    JsonValue json;
    json.type = Type::Number;
    json.text = QString::number(value);
    return json;
}

JsonValue JsonValue::ofString(const QString& text)
{
    JsonValue json;
    json.type = Type::String;
    json.text = text;
    return json;
}

JsonValue JsonValue::array()
{
    JsonValue json;
    json.type = Type::Array;
    return json;
}

JsonValue JsonValue::object()
{
    JsonValue json;
    json.type = Type::Object;
    return json;
}

void JsonValue::set(const QString& name, JsonValue value)
{
    members.push_back({ name, std::move(value) });
}

const JsonValue* JsonValue::member(QStringView name) const
{
    const auto found = std::find_if(members.begin(), members.end(),
        [name](const JsonMember& member) { return member.name == name; });
    return found == members.end() ? nullptr : &found->value;
}

} // namespace kestrel
