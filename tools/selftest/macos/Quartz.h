#pragma once

#include "platform/KeyCodes.h"

#include <sys/types.h>

#include <chrono>

// What the self-test posts to and reads from the window server.
namespace kestrel::selftest::Quartz {

[[nodiscard]] bool mayPost();
[[nodiscard]] bool isTrusted();
[[nodiscard]] bool mayRecord();

void click(double x, double y);
void type(KeyCode key, ModifierFlags modifiers);
[[nodiscard]] bool areAllKeysUp();

// True when the window of that process is on the screen at the floating level.
[[nodiscard]] bool floats(pid_t process, long windowNumber);

void pause(std::chrono::milliseconds duration);

} // namespace kestrel::selftest::Quartz
