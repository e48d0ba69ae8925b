#pragma once

#include "platform/Notices.h"

namespace kestrel {

// What a Wayland session does not allow a program that speaks X11. Which kind of session it is does
// not change while the program runs.
class SessionNotices final : public Notices {
public:
    enum class Session { X11, Wayland };

    explicit SessionNotices(Session session);

    std::vector<Notice> current() override;

    // As the login manager and the compositor say it in the environment.
    [[nodiscard]] static Session sessionOfEnvironment();

private:
    Session m_session;
};

} // namespace kestrel
