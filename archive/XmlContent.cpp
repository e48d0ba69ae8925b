#include "archive/XmlContent.h"

#include "archive/ArchiveError.h"

#include <QByteArray>

#include <algorithm>

namespace kestrel::XmlContent {

namespace {

using Kind = ArchiveError::Kind;

// Refuses a numeric reference to a character that text cannot contain. libplist checks names
// itself.
void checkCharacters(std::string_view content)
{
    for (std::size_t at = content.find("&#"); at != content.npos; at = content.find("&#", at + 2)) {
        const std::size_t end = content.find(';', at);
        const bool isHex = content.substr(at + 2).starts_with('x');
        const std::size_t digits = at + (isHex ? 3 : 2);
        if (end == content.npos || end <= digits)
            refuse("reference to a character without an end");
        bool isNumber = false;
        const QByteArray number(content.data() + digits, static_cast<qsizetype>(end - digits));
        const uint character = number.toUInt(&isNumber, isHex ? 16 : 10);
        if (!isNumber || character == 0 || character > 0x10FFFF
            || (character >= 0xD800 && character <= 0xDFFF))
            throw ArchiveError(Kind::BadText, "reference to a character that does not exist");
    }
}

// libplist takes a number that begins with a zero for an octal one.
bool isDecimal(const QByteArray& number)
{
    const qsizetype sign = number.startsWith('-') || number.startsWith('+') ? 1 : 0;
    return number.size() == sign + 1 || number[sign] != '0';
}

bool isInteger(const QByteArray& text)
{
    bool isSigned = false;
    bool isUnsigned = false;
    (void)text.toLongLong(&isSigned);
    (void)text.toULongLong(&isUnsigned);
    return (isSigned || isUnsigned) && isDecimal(text);
}

bool isReal(const QByteArray& text)
{
    bool isGood = false;
    (void)text.toDouble(&isGood);
    return isGood;
}

bool isBase64(const QByteArray& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')
            || c == '+' || c == '/' || c == '=' || Blanks.find(c) != Blanks.npos;
    });
}

} // namespace

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(Blanks) == std::string_view::npos;
}

void refuse(const char* text)
{
    throw ArchiveError(Kind::MalformedXml, text);
}

void check(std::string_view element, std::string_view content)
{
    if (element == "string" || element == "key") {
        checkCharacters(content);
        return;
    }
    if (element == "true" || element == "false") {
        if (!isBlank(content))
            refuse("text inside a boolean");
        return;
    }
    const QByteArray text
        = QByteArray(content.data(), static_cast<qsizetype>(content.size())).trimmed();
    const bool isGood = element == "integer" ? isInteger(text)
        : element == "real"                  ? isReal(text)
                                             : element != "data" || isBase64(text);
    if (!isGood)
        refuse("value that is not of its element's kind");
}

} // namespace kestrel::XmlContent
