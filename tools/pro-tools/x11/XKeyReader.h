#pragma once

#include "tools/pro-tools/KeyReader.h"

#include <xcb/xcb.h>

#include <bitset>

struct xkb_keymap;

namespace kestrel {

// Reads the key events on Qt's X connection.
class XKeyReader final : public QAbstractNativeEventFilter {
public:
    // Requires Qt's xcb platform plug-in.
    explicit XKeyReader(KeyReceived received);
    ~XKeyReader() override;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    [[nodiscard]] std::string nameOf(xcb_keycode_t key) const;

    KeyReceived m_received;
    std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> m_keymap;
    std::bitset<256> m_down;
};

} // namespace kestrel
