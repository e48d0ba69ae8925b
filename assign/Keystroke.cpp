#include "assign/Keystroke.h"

#include "assign/ModifierGlyphs.h"

#include <QStringEncoder>

#include <algorithm>

namespace kestrel {

namespace {
constexpr qsizetype LongestName = 24; // longer than the name of any key

bool isInsideCharacter(char byte)
{
    return (byte & 0xC0) == 0x80;
}

char printable(char byte)
{
    return (byte >= 0 && byte < ' ') || byte == '\x7F' ? ' ' : byte;
}
} // namespace

void KeystrokeText::append(std::string_view text)
{
    std::size_t size = std::min(text.size(), Capacity - m_size);
    while (size > 0 && size < text.size() && isInsideCharacter(text[size]))
        --size;
    std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(size),
        m_bytes.begin() + m_size, printable);
    m_size = static_cast<std::uint8_t>(m_size + size);
}

void KeystrokeText::appendShortcut(ModifierFlags flags, QStringView keyName)
{
    if (m_size > 0)
        append(", ");
    std::array<QChar, ModifierGlyphs.size() + LongestName> shortcut;
    auto end = shortcut.begin();
    for (const auto& [glyph, flag] : ModifierGlyphs) {
        if (flags & flag)
            *end++ = glyph.front();
    }
    end = std::copy_n(keyName.begin(), std::min(keyName.size(), LongestName), end);
    QStringEncoder encoder(QStringConverter::Utf8);
    std::array<char, 3 * shortcut.size()> utf8; // at most three bytes for each UTF-16 unit
    const char* const last
        = encoder.appendToBuffer(utf8.data(), QStringView(shortcut.data(), end - shortcut.begin()));
    append({ utf8.data(), static_cast<std::size_t>(last - utf8.data()) });
}

} // namespace kestrel
