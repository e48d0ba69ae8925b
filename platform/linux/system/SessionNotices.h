#pragma once

#include "platform/Notices.h"

namespace kestrel {

// Notices about what a Wayland session denies a program that uses X11. The kind of session does not
// change while the program runs.
class SessionNotices final : public Notices {
public:
    enum class Session { X11, Wayland };

    explicit SessionNotices(Session session);

    std::vector<Notice> current() override;

    // The variables that the login manager and the compositor set.
    [[nodiscard]] static Session sessionOfEnvironment();

private:
    Session m_session;
};

} // namespace kestrel
