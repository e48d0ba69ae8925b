#pragma once

#include "platform/MIDIServices.h"

#include <string>
#include <vector>

class QWidget;

// What the probe asks the system from inside of the utility. Each system's folder defines these
// functions once.
namespace kestrel::selftest {

// The entities of the simulated console, if it is no device by itself.
[[nodiscard]] std::vector<MIDIEntity> simulatedConsole();

// What Qt does not tell of the native window: " name=value …".
[[nodiscard]] std::string nativeFacts(const QWidget& window);

// The status item: " area=X,Y,WIDTH,HEIGHT pictures=16x16,32x32 fits=yes online=yes"; empty where
// only the tray knows it.
[[nodiscard]] std::string statusItemFacts();

// As the menu items "Hide" and "Show All" of other programs do. Nothing where the system hides no
// applications.
void setApplicationHidden(bool isHidden);

} // namespace kestrel::selftest
