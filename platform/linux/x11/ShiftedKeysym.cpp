#include "platform/linux/x11/ShiftedKeysym.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XkbProtocol.h"

#include <span>

namespace kestrel {

namespace {
// The kinds of out-of-range treatment in a key's `groupInfo`. The third kind wraps.
constexpr unsigned GroupCountMask = 0x0F;
constexpr unsigned RedirectedGroupMask = 0x30;
constexpr unsigned TreatmentMask = 0xC0;
constexpr unsigned Clamp = 0x40;
constexpr unsigned Redirect = 0x80;

// The group of the layout that the key uses. Keys may have fewer groups than the keyboard.
unsigned groupOf(const xcb_xkb_key_sym_map_t& key, unsigned effectiveGroup)
{
    const unsigned count = key.groupInfo & GroupCountMask;
    if (effectiveGroup < count)
        return effectiveGroup;
    switch (key.groupInfo & TreatmentMask) {
    case Clamp:
        return count - 1;
    case Redirect: {
        const unsigned group = (key.groupInfo & RedirectedGroupMask) >> 4;
        return group < count ? group : 0;
    }
    default:
        return effectiveGroup % count;
    }
}

// A combination of modifiers that the type does not list selects the first level.
unsigned levelOf(const xcb_xkb_key_type_t& type, unsigned modifiers)
{
    const unsigned counted = modifiers & type.mods_mask;
    const std::span entries(
        xcb_xkb_key_type_map(&type), static_cast<std::size_t>(xcb_xkb_key_type_map_length(&type)));
    for (const xcb_xkb_kt_map_entry_t& entry : entries) {
        if (entry.active && entry.mods_mask == counted)
            return entry.level;
    }
    return 0;
}

std::optional<xcb_keysym_t> keysymIn(
    const xcb_xkb_get_map_reply_t& reply, unsigned effectiveGroup, unsigned modifiers)
{
    xcb_xkb_get_map_map_t map {};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(&reply), reply.nTypes, reply.nKeySyms,
        reply.nKeyActions, reply.totalActions, reply.totalKeyBehaviors, reply.virtualMods,
        reply.totalKeyExplicit, reply.totalModMapKeys, reply.totalVModMapKeys, reply.present, &map);
    const auto keys = xcb_xkb_get_map_map_syms_rtrn_iterator(&reply, &map);
    if (keys.rem == 0 || (keys.data->groupInfo & GroupCountMask) == 0)
        return {};
    const xcb_xkb_key_sym_map_t& key = *keys.data;
    const unsigned group = groupOf(key, effectiveGroup);
    if (group >= std::size(key.kt_index))
        return {};
    auto type = xcb_xkb_get_map_map_types_rtrn_iterator(&reply, &map);
    for (unsigned skip = key.kt_index[group]; skip > 0 && type.rem > 0; --skip)
        xcb_xkb_key_type_next(&type);
    if (type.rem == 0)
        return {};
    const unsigned place = group * key.width + levelOf(*type.data, modifiers);
    return place < key.nSyms ? xcb_xkb_key_sym_map_syms(&key)[place] : XCB_NO_SYMBOL;
}

// False when the server does not answer, or does not have XKB.
bool beginXkb(X11Connection& connection)
{
    if (!connection.ensureOpen())
        return false;
    xcb_connection_t* const xcb = connection.xcb();
    // libxcb closes the connection on a request of an extension that the server does not have.
    const auto* xkb = xcb_get_extension_data(xcb, &xcb_xkb_id);
    if (!xkb || !xkb->present)
        return false;
    // The server refuses requests of XKB before this one.
    const auto begin = xcb_xkb_use_extension(xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    xcb_discard_reply(xcb, begin.sequence);
    return true;
}
} // namespace

std::optional<xcb_keysym_t> keysymWithShiftAlone(
    X11Connection& connection, xcb_keycode_t key, std::uint16_t state)
{
    if (!beginXkb(connection))
        return {};
    const auto reply = connection.reply<xcb_xkb_get_map_reply_t>(
        xcb_xkb_get_map(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_MAP_PART_KEY_TYPES,
            XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, key, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)
            .sequence);
    const unsigned group = state >> 13 & 3;
    return reply ? keysymIn(*reply, group, state & XCB_MOD_MASK_SHIFT) : std::nullopt;
}

std::optional<std::uint8_t> groupInUse(X11Connection& connection)
{
    if (!beginXkb(connection))
        return {};
    const auto reply = connection.reply<xcb_xkb_get_state_reply_t>(
        xcb_xkb_get_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD).sequence);
    return reply ? std::optional(reply->group) : std::nullopt;
}

} // namespace kestrel
