#pragma once

#include "tools/pro-tools/ReceivedKey.h"

#include <QAbstractNativeEventFilter>

#include <functional>
#include <memory>

namespace kestrel {

using KeyReceived = std::function<void(const ReceivedKey&)>;

// Reads the key events of the window system before Qt does, because Qt may take some as shortcuts,
// compose them, or compress them. Each system's folder defines these functions once.
[[nodiscard]] std::unique_ptr<QAbstractNativeEventFilter> makeKeyReader(KeyReceived received);

// Switches secure input on or off, as password fields do. False on a system that has none.
[[nodiscard]] bool setSecureInput(bool isOn);

} // namespace kestrel
