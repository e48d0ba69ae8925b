#include "bench/parts/MedianTable.h"

namespace kestrel::bench {

void MedianTable::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
            m_medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
    }
    ConsoleReporter::ReportRuns(runs);
}

double MedianTable::medianUs(const std::string& name) const
{
    const auto found = m_medians.find(name);
    return found == m_medians.end() ? 0 : found->second;
}

} // namespace kestrel::bench
