#pragma once

#include <string_view>

// The digital audio workstation that the utility works for.
namespace kestrel::Workstation {

// What its process is called, to tell that it runs, and what it is called among the running
// applications, to tell that it is in front.
inline constexpr std::string_view Name = "Pro Tools";

} // namespace kestrel::Workstation
