#include "sets/JsonValue.h"

#include <QSet>
#include <QStringDecoder>

namespace kestrel {

namespace {
using Type = JsonValue::Type;

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

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

int hexDigit(QChar c)
{
    if (isDigit(c))
        return c.unicode() - u'0';
    const char16_t lower = c.unicode() | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

class Parser {
public:
    explicit Parser(QStringView text)
        : m_text(text)
    {
    }

    JsonValue parse();

private:
    JsonValue parseValue();
    JsonValue parseWord();
    JsonValue parseNumber();
    JsonValue parseArray();
    JsonValue parseObject();
    QString parseString();
    QChar parseEscape();
    QChar parseHex();
    void takeDigits();

    [[noreturn]] void fail(const char* problem) const
    {
        throw TextError(m_position, QString::fromUtf8(problem));
    }
    [[nodiscard]] QChar peek() const { return m_at < m_text.size() ? m_text[m_at] : QChar(0); }
    QChar take();
    [[nodiscard]] bool takeIf(char16_t wanted);
    void skipBlanks();
    void enter();

    QStringView m_text;
    qsizetype m_at = 0;
    TextPosition m_position;
    int m_depth = 0;
    int m_values = 0;
};

QChar Parser::take()
{
    const QChar c = m_text[m_at++];
    if (c == u'\n')
        m_position = { m_position.line + 1, 1 };
    else if (!c.isLowSurrogate())
        ++m_position.column;
    return c;
}

bool Parser::takeIf(char16_t wanted)
{
    if (m_at >= m_text.size() || m_text[m_at] != wanted)
        return false;
    take();
    return true;
}

void Parser::skipBlanks()
{
    while (m_at < m_text.size()
        && (peek() == u' ' || peek() == u'\n' || peek() == u'\t' || peek() == u'\r'))
        take();
}

JsonValue Parser::parse()
{
    JsonValue value = parseValue();
    skipBlanks();
    if (m_at < m_text.size())
        fail("nothing may follow the set");
    return value;
}

JsonValue Parser::parseValue()
{
    skipBlanks();
    if (m_at >= m_text.size())
        fail("the text ends here");
    if (++m_values > Values)
        fail("more values than any set has");
    const TextPosition position = m_position;
    JsonValue value;
    switch (peek().unicode()) {
    case u'{':
        value = parseObject();
        break;
    case u'[':
        value = parseArray();
        break;
    case u'"':
        value = JsonValue::ofString(parseString());
        break;
    default:
        value = peek() == u'-' || isDigit(peek()) ? parseNumber() : parseWord();
    }
    value.position = position;
    return value;
}

JsonValue Parser::parseWord()
{
    for (const auto word : { u"null", u"true", u"false" }) {
        const QStringView text(word);
        if (m_text.sliced(m_at).startsWith(text)) {
            for (qsizetype i = 0; i < text.size(); ++i)
                take();
            return text == u"null" ? JsonValue() : JsonValue::ofBoolean(text == u"true");
        }
    }
    fail("no value begins like this");
}

void Parser::takeDigits()
{
    if (!isDigit(peek()))
        fail("a digit is missing here");
    while (isDigit(peek()))
        take();
}

JsonValue Parser::parseNumber()
{
    const qsizetype start = m_at;
    (void)takeIf(u'-');
    if (!takeIf(u'0'))
        takeDigits();
    else if (isDigit(peek()))
        fail("a number has no 0 before its digits");
    if (takeIf(u'.'))
        takeDigits();
    if (takeIf(u'e') || takeIf(u'E')) {
        if (!takeIf(u'-'))
            (void)takeIf(u'+');
        takeDigits();
    }
    JsonValue value;
    value.type = Type::Number;
    value.text = m_text.sliced(start, m_at - start).toString();
    return value;
}

void Parser::enter()
{
    if (++m_depth > Depth)
        fail("nested too deep");
    take();
}

JsonValue Parser::parseArray()
{
    enter();
    JsonValue array = JsonValue::array();
    skipBlanks();
    if (!takeIf(u']')) {
        do {
            array.items.push_back(parseValue());
            skipBlanks();
        } while (takeIf(u','));
        if (!takeIf(u']'))
            fail("expected , or ]");
    }
    --m_depth;
    return array;
}

JsonValue Parser::parseObject()
{
    enter();
    JsonValue object = JsonValue::object();
    QSet<QString> names;
    skipBlanks();
    if (!takeIf(u'}')) {
        do {
            skipBlanks();
            const TextPosition position = m_position;
            if (peek() != u'"')
                fail("expected the name of a member in quotes");
            const QString name = parseString();
            if (names.contains(name))
                throw TextError(position, u'"' + name + QStringLiteral("\" is here twice"));
            names.insert(name);
            skipBlanks();
            if (!takeIf(u':'))
                fail("expected :");
            object.members.push_back({ name, parseValue(), position });
            skipBlanks();
        } while (takeIf(u','));
        if (!takeIf(u'}'))
            fail("expected , or }");
    }
    --m_depth;
    return object;
}

QString Parser::parseString()
{
    take();
    QString text;
    while (!takeIf(u'"')) {
        if (m_at >= m_text.size() || peek() == u'\n')
            fail("the string has no end");
        if (peek() < u' ')
            fail("a control character in a string is written as \\u00XX");
        text += takeIf(u'\\') ? parseEscape() : take();
    }
    return text;
}

QChar Parser::parseEscape()
{
    constexpr QStringView Letters = u"\"\\/bfnrt";
    constexpr QStringView Meanings = u"\"\\/\b\f\n\r\t";
    if (takeIf(u'u'))
        return parseHex();
    const qsizetype letter = m_at < m_text.size() ? Letters.indexOf(peek()) : -1;
    if (letter < 0)
        fail("no such escape in JSON");
    take();
    return Meanings[letter];
}

QChar Parser::parseHex()
{
    unsigned int unit = 0;
    for (int i = 0; i < 4; ++i) {
        const int digit = hexDigit(peek());
        if (digit < 0)
            fail("\\u needs four hexadecimal digits");
        unit = unit * 16 + static_cast<unsigned int>(digit);
        take();
    }
    return static_cast<char16_t>(unit);
}
} // namespace

JsonValue parsedJson(const QByteArray& text)
{
    const QString characters = decoded(text);
    return Parser(characters).parse();
}

} // namespace kestrel
