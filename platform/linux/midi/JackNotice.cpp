#include "platform/linux/midi/JackNotice.h"

#include "platform/linux/midi/JackMIDIServices.h"

#include <utility>

namespace kestrel {

JackNotice::JackNotice(const JackMIDIServices& services, std::unique_ptr<Notices> others)
    : m_services(services)
    , m_others(std::move(others))
{
}

std::vector<Notice> JackNotice::current()
{
    std::vector<Notice> notices = m_others->current();
    if (m_services.isUnanswered())
        notices.insert(notices.begin(), { "JACK does not answer", {} });
    return notices;
}

} // namespace kestrel
