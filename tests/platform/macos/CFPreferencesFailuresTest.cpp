#include "platform/macos/CFPreferencesDefaultsStore.h"
#include "tests/platform/macos/stand-ins/CFObject.h"
#include "tests/platform/macos/stand-ins/Calls.h"
#include "tests/platform/macos/stand-ins/Preferences.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using Bytes = DefaultsStore::Bytes;

class CFPreferencesFailuresTest : public testing::Test {
protected:
    CFPreferencesFailuresTest() { preferences() = {}; }
    ~CFPreferencesFailuresTest() override
    {
        calls() = {};
        preferences() = {};
        EXPECT_EQ(CFObject::count(), m_objectsBefore) << "a value was not released";
    }

    static bool isOnDisk(const std::u16string& key)
    {
        return preferences().onDisk.contains({ u"kCFPreferencesCurrentApplication", key });
    }

private:
    int m_objectsBefore = CFObject::count();
};

TEST_F(CFPreferencesFailuresTest, the_domain_is_that_of_the_running_program)
{
    CFPreferencesDefaultsStore defaults;
    defaults.setData("data", Bytes { 1 });
    EXPECT_FALSE(isOnDisk(u"data"));
    EXPECT_TRUE(defaults.synchronise());
    EXPECT_TRUE(isOnDisk(u"data"));
}

TEST_F(CFPreferencesFailuresTest, a_failed_synchronising_is_reported_and_can_be_repeated)
{
    CFPreferencesDefaultsStore defaults;
    defaults.setData("data", Bytes { 1 });
    calls().failing = "CFPreferencesAppSynchronize";
    EXPECT_FALSE(defaults.synchronise());
    EXPECT_FALSE(isOnDisk(u"data"));
    EXPECT_EQ(defaults.data("data"), Bytes { 1 });
    calls() = {};
    EXPECT_TRUE(defaults.synchronise());
    EXPECT_TRUE(isOnDisk(u"data"));
}

TEST_F(CFPreferencesFailuresTest, a_key_that_is_not_UTF_8_is_missing_and_stays_so)
{
    CFPreferencesDefaultsStore defaults;
    defaults.setData("\xFF", Bytes { 1 });
    EXPECT_EQ(defaults.data("\xFF"), std::nullopt);
    EXPECT_TRUE(preferences().pending.empty());
}

} // namespace
} // namespace kestrel::test
