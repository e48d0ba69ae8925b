#pragma once

#include "tools/kestrelctl/doctor/DoctorFacts.h"

#include <optional>
#include <span>
#include <string>

namespace kestrel::ctl {

struct Finding {
    bool isWrong = false;
    std::string text; // sentences: what holds, or what is wrong and what to do
};

// No value when the check does not apply to this system or nobody can know.
using Check = std::optional<Finding> (*)(const DoctorFacts& facts);

struct NamedCheck {
    const char* name; // as the table of the documents names it
    Check check;
};

// All checks, in the order in which they are printed.
[[nodiscard]] std::span<const NamedCheck> checks();

[[nodiscard]] inline Finding fine(std::string text)
{
    return { false, std::move(text) };
}
[[nodiscard]] inline Finding wrong(std::string text)
{
    return { true, std::move(text) };
}

// The checks of the running program and of what it has stored.
namespace ProgramChecks {
[[nodiscard]] std::optional<Finding> kestrel(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> start(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> link(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> tray(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> defaults(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> damagedCopies(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> autostart(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> fileType(const DoctorFacts& facts);
} // namespace ProgramChecks

// The checks of the display and of what stands between a key and the workstation.
namespace KeyChecks {
[[nodiscard]] std::optional<Finding> display(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> session(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> workstation(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> window(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> front(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> permission(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> leftoverKeys(const DoctorFacts& facts);
} // namespace KeyChecks

// The checks of the way to the console.
namespace ConsoleChecks {
[[nodiscard]] std::optional<Finding> service(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> library(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> pipeWire(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> driver(const DoctorFacts& facts);
[[nodiscard]] std::optional<Finding> console(const DoctorFacts& facts);
} // namespace ConsoleChecks

} // namespace kestrel::ctl
