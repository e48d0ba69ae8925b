#pragma once

#include "sets/JsonValue.h"

#include <QStringView>

namespace kestrel {

// Reads the characters, words, numbers and strings of a JSON text, and knows where it is.
class JsonScanner {
public:
    // The text outlives the scanner.
    explicit JsonScanner(QStringView text)
        : m_text(text)
    {
    }

    [[nodiscard]] TextPosition position() const { return m_position; }
    [[nodiscard]] bool isAtEnd() const { return m_at >= m_text.size(); }
    [[nodiscard]] QChar peek() const { return isAtEnd() ? QChar(0) : m_text[m_at]; }
    [[nodiscard]] bool isAtDigit() const { return peek() >= u'0' && peek() <= u'9'; }

    void skipBlanks();
    QChar take(); // not at the end
    [[nodiscard]] bool takeIf(char16_t wanted);
    [[nodiscard]] bool takeIf(QStringView word);

    // These throw TextError if the text is wrong.
    [[nodiscard]] QString takeNumber(); // as it is written
    [[nodiscard]] QString takeString(); // what it means, after its first quotation mark was seen
    [[noreturn]] void fail(const char* problem) const;

private:
    QChar takeEscape();
    QChar takeHex();
    void takeDigits();

    QStringView m_text;
    qsizetype m_at = 0;
    TextPosition m_position;
};

} // namespace kestrel
