#include "tools/demo/DoctorAct.h"

#include <iostream>

namespace kestrel {

bool DoctorAct::says(const std::string& start)
{
    const auto doctor = m_performance.studio.start("kestrelctl", { "doctor" });
    static_cast<void>(doctor->wait(Performance::StartTimeout));
    bool isSaid = false;
    for (const auto& line : doctor->linesUntilQuiet(Performance::Quiet)) {
        std::cout << "  " << line << '\n';
        isSaid = isSaid || line.starts_with(start);
    }
    return isSaid;
}

void DoctorAct::findNothingWrong()
{
    std::cout << "kestrelctl doctor\n";
    m_performance.check("the doctor finds the console online", says("ok     link "));
}

void DoctorAct::findMissingConsole()
{
    std::cout << "kestrelctl doctor, after the console has gone\n";
    m_performance.check("the doctor misses the console", says("WRONG  console "));
}

} // namespace kestrel
