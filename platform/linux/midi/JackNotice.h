#pragma once

#include "platform/Notices.h"

#include <memory>

namespace kestrel {

class JackMIDIServices;

// Adds a notice for as long as JACK owes an answer. Main thread only.
class JackNotice final : public Notices {
public:
    // `services` outlive the notice.
    JackNotice(const JackMIDIServices& services, std::unique_ptr<Notices> others);

    // The own notice first.
    std::vector<Notice> current() override;

private:
    const JackMIDIServices& m_services;
    const std::unique_ptr<Notices> m_others;
};

} // namespace kestrel
