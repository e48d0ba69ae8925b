#pragma once

#include "tests/platform/macos/stand-ins/CFObject.h"

#include <string>

namespace kestrel::test {

// A string in UTF-16, as Core Foundation has it: a lone surrogate is possible.
class CFString final : public CFObject {
public:
    explicit CFString(std::u16string text)
        : CFObject(String)
        , m_text(std::move(text))
    {
    }

    [[nodiscard]] const std::u16string& text() const { return m_text; }
    [[nodiscard]] bool equals(const CFObject& other) const override;

    [[nodiscard]] static const std::u16string& textOf(CFStringRef string)
    {
        return of<CFString>(string).text();
    }

private:
    const std::u16string m_text;
};

} // namespace kestrel::test
