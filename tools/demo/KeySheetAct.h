#pragma once

#include "tools/demo/Performance.h"

namespace kestrel {

// Saves key sheets of the set in use, as a person does: from the menu, in the file dialog.
class KeySheetAct {
public:
    explicit KeySheetAct(Performance& performance)
        : m_performance(performance)
    {
    }

    void save();

private:
    void saveAs(const std::filesystem::path& sheet);

    Performance& m_performance;
};

} // namespace kestrel
