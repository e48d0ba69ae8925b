#pragma once

#include "control/StatusReport.h"

#include <string>
#include <vector>

namespace kestrel::ctl {

// The report in lines for people. `now` is the present time.
[[nodiscard]] std::vector<std::string> statusText(const StatusReport& report, const QDateTime& now);

} // namespace kestrel::ctl
