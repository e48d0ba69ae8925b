#include "platform/macos/CFPreferencesDefaultsStore.h"

#include "platform/macos/CFText.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace kestrel::test {
namespace {

using Bytes = DefaultsStore::Bytes;

// A preferences domain that exists only for the test.
class CFPreferencesDefaultsStoreTest : public testing::Test {
protected:
    ~CFPreferencesDefaultsStoreTest() override
    {
        for (const CFStringRef key : { CFSTR("data"), CFSTR("other"), CFSTR("other.damaged") })
            CFPreferencesSetAppValue(key, nullptr, domain.get());
        CFPreferencesAppSynchronize(domain.get());
    }

    const CFHolder<CFStringRef> domain
        = CFText::fromUtf8("com.holvik.kestrel.tests." + std::to_string(getpid()));
    CFPreferencesDefaultsStore defaults { domain.get() };
};

TEST_F(CFPreferencesDefaultsStoreTest, a_key_that_was_never_set_is_missing)
{
    EXPECT_EQ(defaults.data("data"), std::nullopt);
}

TEST_F(CFPreferencesDefaultsStoreTest, data_comes_back_at_once_and_after_synchronising)
{
    const Bytes value { 0x62, 0x70, 0x00, 0xFF };
    defaults.setData("data", value);
    EXPECT_EQ(defaults.data("data"), value);
    EXPECT_TRUE(defaults.synchronise());
    EXPECT_EQ(defaults.problem(), "");
    EXPECT_EQ(CFPreferencesDefaultsStore(domain.get()).data("data"), value);
}

TEST_F(CFPreferencesDefaultsStoreTest, empty_data_is_not_missing)
{
    defaults.setData("data", {});
    EXPECT_EQ(defaults.data("data"), Bytes());
}

TEST_F(CFPreferencesDefaultsStoreTest, a_value_of_another_kind_is_missing)
{
    CFPreferencesSetAppValue(CFSTR("other"), CFSTR("text"), domain.get());
    EXPECT_EQ(defaults.data("other"), std::nullopt);
}

TEST_F(CFPreferencesDefaultsStoreTest, a_value_of_another_kind_is_kept_aside_before_it_is_replaced)
{
    CFPreferencesSetAppValue(CFSTR("other"), CFSTR("text"), domain.get());
    defaults.setData("other", Bytes { 1 });
    defaults.setData("other", Bytes { 2 });
    EXPECT_EQ(defaults.data("other"), Bytes { 2 });
    const CFHolder aside(CFPreferencesCopyAppValue(CFSTR("other.damaged"), domain.get()));
    EXPECT_TRUE(CFEqual(aside.get(), CFSTR("text")));
}

TEST_F(CFPreferencesDefaultsStoreTest, setting_one_key_leaves_another_alone)
{
    defaults.setData("other", Bytes { 1 });
    defaults.setData("data", Bytes { 2 });
    ASSERT_TRUE(defaults.synchronise());
    EXPECT_EQ(defaults.data("other"), Bytes { 1 });
}

} // namespace
} // namespace kestrel::test
