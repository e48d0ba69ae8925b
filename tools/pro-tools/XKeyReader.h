#pragma once

#include "tools/pro-tools/ReceivedKey.h"

#include <QAbstractNativeEventFilter>

#include <xcb/xcb.h>

#include <bitset>
#include <functional>
#include <memory>

struct xkb_keymap;

namespace kestrel {

// Reads the key events on Qt's X connection before Qt does, because Qt may take some as shortcuts,
// compose them, or compress them.
class XKeyReader final : public QAbstractNativeEventFilter {
public:
    using Received = std::function<void(const ReceivedKey&)>;

    // Requires Qt's xcb platform plug-in.
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
