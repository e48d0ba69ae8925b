#pragma once

#include <QString>

#include <string>

namespace kestrel::ctl {

// Prints a line. False when nobody takes it: the reader of a pipe has ended.
bool printLine(const std::string& line);

// The text with a dot in the place of each control character, which a terminal would obey.
[[nodiscard]] std::string printable(const QString& text);

} // namespace kestrel::ctl
