#include "tests/platform/macos/stand-ins/Activities.h"

#include "tests/platform/macos/stand-ins/CFObject.h"

#include <map>

namespace kestrel::test {
namespace {

std::map<Activity::Kind, int> held;

class HeldActivity final : public CFObject {
public:
    explicit HeldActivity(Activity::Kind kind)
        : CFObject(CFObject::Activity)
        , m_kind(kind)
    {
        ++held[m_kind];
    }
    ~HeldActivity() override { --held[m_kind]; }

private:
    const Activity::Kind m_kind;
};

} // namespace

int heldActivities(Activity::Kind kind)
{
    return held[kind];
}

} // namespace kestrel::test

namespace kestrel {

Activity::Activity(Kind kind)
    : m_activity((new test::HeldActivity(kind))->as<CFTypeRef>())
{
}

Activity::~Activity() = default;

} // namespace kestrel
