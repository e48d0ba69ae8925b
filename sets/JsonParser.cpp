#include "sets/JsonScanner.h"

#include <QSet>
#include <QStringDecoder>

namespace kestrel {

namespace {
// More than any set needs: an archive has at most 50,000 values, 128 levels deep.
constexpr int Depth = 1000;
constexpr int Values = 1'000'000;

// Bytes that are no UTF-8 are no characters, so the column counts bytes then.
[[noreturn]] void failAtBadByte(const QByteArray& utf8)
{
    TextPosition position;
    QStringDecoder decoder(QStringDecoder::Utf8);
    for (const char& byte : utf8) {
        (void)QString(decoder.decode(QByteArrayView(&byte, 1)));
        if (decoder.hasError())
            break;
        position = byte == '\n' ? TextPosition { position.line + 1, 1 }
                                : TextPosition { position.line, position.column + 1 };
    }
    throw TextError(position, QStringLiteral("the text is no UTF-8 here"));
}

QString decoded(const QByteArray& utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(utf8);
    if (decoder.hasError())
        failAtBadByte(utf8);
    return text;
}

class Parser {
public:
    explicit Parser(QStringView text)
        : m_scanner(text)
    {
    }

    JsonValue parse();

private:
    JsonValue parseValue();
    JsonValue parseWord();
    JsonValue parseNumber();
    JsonValue parseArray();
    JsonValue parseObject();
    JsonMember parseMember(QSet<QString>& names);
    void enter();

    JsonScanner m_scanner;
    int m_depth = 0;
    int m_values = 0;
};

JsonValue Parser::parse()
{
    JsonValue value = parseValue();
    m_scanner.skipBlanks();
    if (!m_scanner.isAtEnd())
        m_scanner.fail("nothing may follow the set");
    return value;
}

JsonValue Parser::parseValue()
{
    m_scanner.skipBlanks();
    if (m_scanner.isAtEnd())
        m_scanner.fail("the text ends here");
    if (++m_values > Values)
        m_scanner.fail("more values than any set has");
    const TextPosition position = m_scanner.position();
    JsonValue value;
    switch (m_scanner.peek().unicode()) {
    case u'{':
        value = parseObject();
        break;
    case u'[':
        value = parseArray();
        break;
    case u'"':
        value = JsonValue::ofString(m_scanner.takeString());
        break;
    default:
        value = m_scanner.peek() == u'-' || m_scanner.isAtDigit() ? parseNumber() : parseWord();
    }
    value.position = position;
    return value;
}

JsonValue Parser::parseWord()
{
    if (m_scanner.takeIf(u"null"))
        return {};
    if (m_scanner.takeIf(u"true"))
        return JsonValue::ofBoolean(true);
    if (m_scanner.takeIf(u"false"))
        return JsonValue::ofBoolean(false);
    m_scanner.fail("no value begins like this");
}

JsonValue Parser::parseNumber()
{
    JsonValue value;
    value.type = JsonValue::Type::Number;
    value.text = m_scanner.takeNumber();
    return value;
}

void Parser::enter()
{
    if (++m_depth > Depth)
        m_scanner.fail("nested too deep");
    m_scanner.take();
}

JsonValue Parser::parseArray()
{
    enter();
    JsonValue array = JsonValue::array();
    m_scanner.skipBlanks();
    if (!m_scanner.takeIf(u']')) {
        do {
            array.items.push_back(parseValue());
            m_scanner.skipBlanks();
        } while (m_scanner.takeIf(u','));
        if (!m_scanner.takeIf(u']'))
            m_scanner.fail("expected , or ]");
    }
    --m_depth;
    return array;
}

JsonValue Parser::parseObject()
{
    enter();
    JsonValue object = JsonValue::object();
    QSet<QString> names;
    m_scanner.skipBlanks();
    if (!m_scanner.takeIf(u'}')) {
        do {
            object.members.push_back(parseMember(names));
            m_scanner.skipBlanks();
        } while (m_scanner.takeIf(u','));
        if (!m_scanner.takeIf(u'}'))
            m_scanner.fail("expected , or }");
    }
    --m_depth;
    return object;
}

// Adds the name to those of the object.
JsonMember Parser::parseMember(QSet<QString>& names)
{
    m_scanner.skipBlanks();
    const TextPosition position = m_scanner.position();
    if (m_scanner.peek() != u'"')
        m_scanner.fail("expected the name of a member in quotes");
    const QString name = m_scanner.takeString();
    if (names.contains(name))
        throw TextError(position, u'"' + name + QStringLiteral("\" is here twice"));
    names.insert(name);
    m_scanner.skipBlanks();
    if (!m_scanner.takeIf(u':'))
        m_scanner.fail("expected :");
    return { name, parseValue(), position };
}
} // namespace

JsonValue parsedJson(const QByteArray& text)
{
    const QString characters = decoded(text);
    return Parser(characters).parse();
}

} // namespace kestrel
