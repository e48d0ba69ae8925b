#include "sets/JsonScanner.h"

namespace kestrel {

namespace {
int hexDigit(QChar c)
{
    if (c >= u'0' && c <= u'9')
        return c.unicode() - u'0';
    const char16_t lower = c.unicode() | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}
} // namespace

void JsonScanner::fail(const char* problem) const
{
    throw TextError(m_position, QString::fromUtf8(problem));
}

QChar JsonScanner::take()
{
    const QChar c = m_text[m_at++];
    if (c == u'\n')
        m_position = { m_position.line + 1, 1 };
    else if (!c.isLowSurrogate())
        ++m_position.column;
    return c;
}

bool JsonScanner::takeIf(char16_t wanted)
{
    if (isAtEnd() || m_text[m_at] != wanted)
        return false;
    take();
    return true;
}

bool JsonScanner::takeIf(QStringView word)
{
    if (!m_text.sliced(m_at).startsWith(word))
        return false;
    for (qsizetype i = 0; i < word.size(); ++i)
        take();
    return true;
}

void JsonScanner::skipBlanks()
{
    while (peek() == u' ' || peek() == u'\n' || peek() == u'\t' || peek() == u'\r')
        take();
}

void JsonScanner::takeDigits()
{
    if (!isAtDigit())
        fail("a digit is missing here");
    while (isAtDigit())
        take();
}

QString JsonScanner::takeNumber()
{
    const qsizetype start = m_at;
    (void)takeIf(u'-');
    if (!takeIf(u'0'))
        takeDigits();
    else if (isAtDigit())
        fail("a number has no 0 before its digits");
    if (takeIf(u'.'))
        takeDigits();
    if (takeIf(u'e') || takeIf(u'E')) {
        if (!takeIf(u'-'))
            (void)takeIf(u'+');
        takeDigits();
    }
    return m_text.sliced(start, m_at - start).toString();
}

QString JsonScanner::takeString()
{
    take();
    QString text;
    while (!takeIf(u'"')) {
        if (isAtEnd() || peek() == u'\n')
            fail("the string has no end");
        if (peek() < u' ')
            fail("a control character in a string is written as \\u00XX");
        text += takeIf(u'\\') ? takeEscape() : take();
    }
    return text;
}

QChar JsonScanner::takeEscape()
{
    constexpr QStringView Letters = u"\"\\/bfnrt";
    constexpr QStringView Meanings = u"\"\\/\b\f\n\r\t";
    if (takeIf(u'u'))
        return takeHex();
    const qsizetype letter = isAtEnd() ? -1 : Letters.indexOf(peek());
    if (letter < 0)
        fail("no such escape in JSON");
    take();
    return Meanings[letter];
}

QChar JsonScanner::takeHex()
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

} // namespace kestrel
