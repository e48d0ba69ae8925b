#include "platform/linux/x11/KeysymCharacters.h"

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace kestrel {

namespace {
struct DeadKey {
    std::uint32_t keysym;
    std::string_view accent; // UTF-8
};

// An accent for which Unicode has no spacing character stands on a dotted circle, U+25CC.
constexpr std::array<DeadKey, 49> DeadKeys { {
    { XKB_KEY_dead_grave, "`" },
    { XKB_KEY_dead_acute, "\u00B4" },
    { XKB_KEY_dead_circumflex, "^" },
    { XKB_KEY_dead_tilde, "~" },
    { XKB_KEY_dead_macron, "\u00AF" },
    { XKB_KEY_dead_breve, "\u02D8" },
    { XKB_KEY_dead_abovedot, "\u02D9" },
    { XKB_KEY_dead_diaeresis, "\u00A8" },
    { XKB_KEY_dead_abovering, "\u02DA" },
    { XKB_KEY_dead_doubleacute, "\u02DD" },
    { XKB_KEY_dead_caron, "\u02C7" },
    { XKB_KEY_dead_cedilla, "\u00B8" },
    { XKB_KEY_dead_ogonek, "\u02DB" },
    { XKB_KEY_dead_iota, "\u037A" },
    { XKB_KEY_dead_voiced_sound, "\u309B" },
    { XKB_KEY_dead_semivoiced_sound, "\u309C" },
    { XKB_KEY_dead_belowdot, "\u25CC\u0323" },
    { XKB_KEY_dead_hook, "\u25CC\u0309" },
    { XKB_KEY_dead_horn, "\u25CC\u031B" },
    { XKB_KEY_dead_stroke, "\u25CC\u0335" },
    { XKB_KEY_dead_psili, "\u1FBF" },
    { XKB_KEY_dead_dasia, "\u1FFE" },
    { XKB_KEY_dead_doublegrave, "\u02F5" },
    { XKB_KEY_dead_belowring, "\u02F3" },
    { XKB_KEY_dead_belowmacron, "\u02CD" },
    { XKB_KEY_dead_belowcircumflex, "\uA788" },
    { XKB_KEY_dead_belowtilde, "\u02F7" },
    { XKB_KEY_dead_belowbreve, "\u25CC\u032E" },
    { XKB_KEY_dead_belowdiaeresis, "\u25CC\u0324" },
    { XKB_KEY_dead_invertedbreve, "\u25CC\u0311" },
    { XKB_KEY_dead_belowcomma, "\u25CC\u0326" },
    { XKB_KEY_dead_currency, "\u00A4" },
    { XKB_KEY_dead_lowline, "_" },
    { XKB_KEY_dead_aboveverticalline, "\u02C8" },
    { XKB_KEY_dead_belowverticalline, "\u02CC" },
    { XKB_KEY_dead_longsolidusoverlay, "/" },
    { XKB_KEY_dead_a, "a" },
    { XKB_KEY_dead_A, "A" },
    { XKB_KEY_dead_e, "e" },
    { XKB_KEY_dead_E, "E" },
    { XKB_KEY_dead_i, "i" },
    { XKB_KEY_dead_I, "I" },
    { XKB_KEY_dead_o, "o" },
    { XKB_KEY_dead_O, "O" },
    { XKB_KEY_dead_u, "u" },
    { XKB_KEY_dead_U, "U" },
    { XKB_KEY_dead_small_schwa, "\u0259" },
    { XKB_KEY_dead_capital_schwa, "\u018F" },
    { XKB_KEY_dead_greek, "\u00B5" },
} };
static_assert(
    std::ranges::none_of(DeadKeys, [](const DeadKey& key) { return key.accent.empty(); }));

bool isControlCharacter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}
} // namespace

std::string charactersOfKeysym(std::uint32_t keysym)
{
    const auto* const dead = std::ranges::find(DeadKeys, keysym, &DeadKey::keysym);
    if (dead != DeadKeys.end())
        return std::string(dead->accent);
    std::array<char, 8> utf8 {};
    if (xkb_keysym_to_utf8(keysym, utf8.data(), utf8.size()) <= 1 || isControlCharacter(utf8[0]))
        return {};
    return utf8.data();
}

} // namespace kestrel
