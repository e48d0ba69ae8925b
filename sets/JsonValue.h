#pragma once

#include <QString>

#include <stdexcept>
#include <vector>

namespace kestrel {

// A place in a text, both counted from 1; the column in characters.
struct TextPosition {
    int line = 1;
    int column = 1;
};

// Says why a text was refused, and where.
class TextError : public std::runtime_error {
public:
    TextError(TextPosition position, const QString& problem);

    [[nodiscard]] TextPosition position() const { return m_position; }

private:
    TextPosition m_position;
};

struct JsonMember;

// A value of a JSON text. It keeps what QJsonValue does not: the order of members, all digits of
// numbers, surrogates without their partner, and where each value was read.
struct JsonValue {
    enum class Type { Null, Boolean, Number, String, Array, Object };

    Type type = Type::Null;
    bool boolean = false;
    QString text; // the string, or the digits of the number
    std::vector<JsonValue> items;
    std::vector<JsonMember> members;
    TextPosition position = {};

    [[nodiscard]] static JsonValue ofBoolean(bool value);
    [[nodiscard]] static JsonValue ofNumber(qint64 value);
    [[nodiscard]] static JsonValue ofString(const QString& text);
    [[nodiscard]] static JsonValue array();
    [[nodiscard]] static JsonValue object();

    [[nodiscard]] bool is(Type wanted) const { return type == wanted; }
    void set(const QString& name, JsonValue value); // adds a member
    // Null if there is none.
    [[nodiscard]] const JsonValue* member(QStringView name) const;
};

struct JsonMember {
    QString name;
    JsonValue value;
    TextPosition position = {}; // of the name
};

// UTF-8, always the same for the same value: two blanks for each level, and a container that fits
// into a line of 100 characters in one line. Characters that have no width are escaped.
[[nodiscard]] QByteArray jsonText(const JsonValue& value);

// The same in one line, however long.
[[nodiscard]] QString jsonLine(const JsonValue& value);

// Throws TextError. A name may be given once in each object.
[[nodiscard]] JsonValue parsedJson(const QByteArray& text);

} // namespace kestrel
