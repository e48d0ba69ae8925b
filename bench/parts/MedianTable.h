#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace kestrel::bench {

// Keeps the medians while it prints the usual report, for tables that put them side by side.
class MedianTable : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;

    // Microseconds of CPU; 0 for a name that was not run.
    [[nodiscard]] double medianUs(const std::string& name) const;

private:
    std::map<std::string, double> m_medians;
};

} // namespace kestrel::bench
