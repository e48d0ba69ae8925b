#pragma once

#include "tools/pro-tools/ReceivedKey.h"

#include <QAbstractNativeEventFilter>

#include <xcb/xcb.h>

#include <bitset>
#include <functional>
#include <memory>

struct xkb_keymap;

namespace kestrel {

// Sees the key events of the toolkit's connection before the toolkit does, so that nothing is
// swallowed as a shortcut, composed, or compressed.
class XKeyReader final : public QAbstractNativeEventFilter {
public:
    using Received = std::function<void(const ReceivedKey&)>;

    // Only where the toolkit talks to an X server.
    explicit XKeyReader(Received received);
    ~XKeyReader() override;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    [[nodiscard]] std::string nameOf(xcb_keycode_t key) const;

    Received m_received;
    std::unique_ptr<xkb_keymap, void (*)(xkb_keymap*)> m_keymap;
    std::bitset<256> m_down;
};

} // namespace kestrel
