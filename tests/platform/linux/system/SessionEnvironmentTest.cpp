#include "platform/linux/system/SessionEnvironment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace kestrel::test {
namespace {

// Puts a variable back as it was when the test is over.
class Variable {
public:
    explicit Variable(const char* name)
        : m_name(name)
    {
        if (const char* const value = std::getenv(name))
            m_before = value;
        ::unsetenv(name);
    }
    ~Variable()
    {
        if (m_before)
            set(m_before->c_str());
        else
            ::unsetenv(m_name);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

    void set(const char* value) const { ::setenv(m_name, value, 1); }
    [[nodiscard]] std::string value() const
    {
        const char* const value = std::getenv(m_name);
        return value ? value : "unset";
    }

private:
    const char* m_name;
    std::optional<std::string> m_before;
};

TEST(SessionEnvironment, the_toolkit_speaks_x11_in_every_session)
{
    const Variable backEnd("QT_QPA_PLATFORM");
    prepareEnvironment();
    EXPECT_EQ(backEnd.value(), "xcb");
}

TEST(SessionEnvironment, pipewire_passes_packets_as_they_are)
{
    const Variable properties("PIPEWIRE_PROPS");
    prepareEnvironment();
    EXPECT_EQ(properties.value(), "{ jack.fix-midi-events = false }");
}

TEST(SessionEnvironment, what_the_user_has_set_stays)
{
    const Variable backEnd("QT_QPA_PLATFORM");
    const Variable properties("PIPEWIRE_PROPS");
    backEnd.set("offscreen");
    properties.set("{ node.name = mine }");
    prepareEnvironment();
    EXPECT_EQ(backEnd.value(), "offscreen");
    EXPECT_EQ(properties.value(), "{ node.name = mine }");
}

} // namespace
} // namespace kestrel::test
