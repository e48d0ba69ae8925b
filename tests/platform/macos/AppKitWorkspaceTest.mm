#include "platform/macos/AppKitWorkspace.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

class AppKitWorkspaceTest : public testing::Test {
protected:
    static void runMainQueue()
    {
        [NSRunLoop.mainRunLoop runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.1]];
    }

    // As the event manager does with an event of the system.
    static void arrive(AEEventID eventID)
    {
        const auto process = getpid();
        auto* const target = [NSAppleEventDescriptor descriptorWithProcessIdentifier:process];
        auto* const event = [NSAppleEventDescriptor appleEventWithEventClass:kCoreEventClass
                                                                     eventID:eventID
                                                            targetDescriptor:target
                                                                    returnID:kAutoGenerateReturnID
                                                               transactionID:kAnyTransactionID];
        AppleEvent reply { typeNull, nullptr };
        [NSAppleEventManager.sharedAppleEventManager dispatchRawAppleEvent:event.aeDesc
                                                              withRawReply:&reply
                                                             handlerRefCon:&reply];
    }

    AppKitWorkspace workspace;
};

TEST_F(AppKitWorkspaceTest, an_empty_path_opens_nothing)
{
    EXPECT_FALSE(workspace.openFile(""));
}

TEST_F(AppKitWorkspaceTest, visits_only_applications_that_the_system_calls_active)
{
    int visited = 0;
    workspace.visitActiveApplications([&visited](std::string_view) {
        ++visited;
        return true;
    });
    int active = 0;
    for (NSRunningApplication* each in NSWorkspace.sharedWorkspace.runningApplications)
        active += each.active ? 1 : 0;
    EXPECT_EQ(visited, active);
}

TEST_F(AppKitWorkspaceTest, handles_an_event_from_the_next_turn_of_the_main_queue_until_it_is_ended)
{
    int quits = 0;
    workspace.setQuitRequested([&quits] { ++quits; });
    runMainQueue();
    arrive(kAEQuitApplication);
    EXPECT_EQ(quits, 1);
    workspace.setQuitRequested({});
    arrive(kAEQuitApplication);
    EXPECT_EQ(quits, 1);
}

TEST_F(AppKitWorkspaceTest, a_handler_that_is_replaced_before_its_turn_is_never_called)
{
    int first = 0;
    int second = 0;
    workspace.setReopened([&first] { ++first; });
    workspace.setReopened([&second] { ++second; });
    runMainQueue();
    arrive(kAEReopenApplication);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

} // namespace
} // namespace kestrel::test
