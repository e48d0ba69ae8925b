#include "platform/macos/QuartzKeyTranslation.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

constexpr std::uint32_t KeyReturn = 36;

std::optional<TranslatedKey> translated(std::uint32_t virtualKey, std::uint32_t modifiers)
{
    return QuartzKeyTranslation().translate({ 0, virtualKey, modifiers, "" });
}

TEST(QuartzKeyTranslation, key_code_and_all_bits_of_the_flags_are_taken_as_they_are)
{
    const auto key = translated(KeyReturn, Modifier::Command | Modifier::CapsLock | 0x108);
    ASSERT_TRUE(key);
    EXPECT_EQ(key->keyCode, KeyReturn);
    EXPECT_EQ(key->flags, Modifier::Command | Modifier::CapsLock | 0x108);
}

TEST(QuartzKeyTranslation, characters_are_those_of_the_key_with_only_shift_honoured)
{
    const auto plain = translated(KeyReturn, 0);
    const auto changed = translated(KeyReturn, Modifier::Command | Modifier::Control);
    ASSERT_TRUE(plain && changed);
    EXPECT_EQ(plain->charactersIgnoringModifiers, "\r");
    EXPECT_EQ(changed->charactersIgnoringModifiers, "\r");
}

TEST(QuartzKeyTranslation, modifier_keys_and_codes_beyond_16_bits_are_no_keys)
{
    for (std::uint32_t code = 54; code <= 63; ++code)
        EXPECT_EQ(translated(code, 0), std::nullopt) << code;
    EXPECT_EQ(translated(0x10000, 0), std::nullopt);
    EXPECT_TRUE(translated(53, 0));
    EXPECT_TRUE(translated(64, 0));
}

} // namespace
} // namespace kestrel::test
