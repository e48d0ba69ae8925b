#pragma once

#include "tools/demo/Performance.h"

namespace kestrel {

// Opens the Activity window, which explains why a key typed nothing, saves what happened, and has
// the console play it back.
class ActivityAct {
public:
    explicit ActivityAct(Performance& performance)
        : m_performance(performance)
    {
    }

    void explainAndPlayBack();

private:
    void explain();
    void save(const std::filesystem::path& recording);
    void playBack(const std::filesystem::path& recording);

    Performance& m_performance;
};

} // namespace kestrel
