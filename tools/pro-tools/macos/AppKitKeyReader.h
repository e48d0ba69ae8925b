#pragma once

#include "tools/pro-tools/KeyReader.h"

namespace kestrel {

// Reads the key events of AppKit, with their exact codes and flags.
class AppKitKeyReader final : public QAbstractNativeEventFilter {
public:
    explicit AppKitKeyReader(KeyReceived received)
        : m_received(std::move(received))
    {
    }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    KeyReceived m_received;
};

} // namespace kestrel
