#pragma once

#include "archive/ArchiveObject.h"
#include "setup/ButtonGroup.h"
#include "setup/UserAssinableWindowController.h"
#include "setup/WindowCloseObserver.h"
#include "shortcut/ClearButton.h"
#include "tests/fakes/FakeSystem.h"
#include "tests/support/InterfaceTest.h"

namespace kestrel::test {

// Makes a set with any two values as its tables, as a file may contain them.
[[nodiscard]] inline std::shared_ptr<UserAssignFile> setOf(
    const ArchiveValue& shortcuts, const ArchiveValue& titles)
{
    ArchiveObject coder({ "UserAssignFile", "NSObject" });
    coder.encodeObject("orgShortcutArray", shortcuts);
    coder.encodeObject("orgShortcutTitleArray", titles);
    return std::make_shared<UserAssignFile>(coder);
}

// Records the notifications of the interface under their literal names. What `state` returns at
// that moment is part of the record.
class NotificationLog {
public:
    explicit NotificationLog(NotificationCenter& center)
    {
        for (const char* name :
            { "refreshShortcutName", "hideUserAssignEditBox", "NSWindowWillCloseNotification" })
            m_observations.push_back(center.addObserver(
                QString::fromLatin1(name), [this, name](const Notification& notification) {
                    if (state)
                        told.push_back(name + state(notification.object));
                }));
    }

    std::function<std::string(const QObject* sender)> state; // nothing is recorded without it
    std::vector<std::string> told;

private:
    std::vector<NotificationCenter::Observation> m_observations;
};

// The setup window on a live set of twelve empty entries and titles. One list records all calls to
// its services.
struct SetupBench {
    explicit SetupBench(FakeDefaultsStore* saved = nullptr)
        : defaults(saved ? *saved : ownDefaults)
    {
        live->initShortcutArray();
        controller.setMyWindowController(&panel);
        controller.initShortcut(live);
    }

    // The services, for further windows.
    [[nodiscard]] SetupServices services()
    {
        return { { center, translation }, defaults, attributes, visibility, [this] {
                    ++becameLive;
                    liveWhenItBecame = liveText(1).toStdString();
                } };
    }
    // Opens the window as the menu does.
    void open()
    {
        const bool wasVisible = controller.isVisible() && !controller.window()->isMinimized();
        controller.showWindow();
        controller.makeKeyAndOrderFront();
        if (!wasVisible)
            controller.setupUI(*live);
    }
    // Stores a shortcut in the live set.
    void give(
        int number, std::size_t record, ModifierFlags flags, KeyCode code, const QString& text)
    {
        const ButtonEntry entry = live->getSwitchShortcut(number);
        entry->replace(4 * record, flags);
        entry->replace(4 * record + 1, code);
        entry->replace(4 * record + 2, text);
    }

    [[nodiscard]] UserAssignableButton& button(int i) const
    {
        return *controller.userAssignableButtons()[static_cast<std::size_t>(i)]->view();
    }
    [[nodiscard]] MyShortcutField& field(int i) const { return *controller.getMyShortcutField(i); }
    [[nodiscard]] ClearButton& clear(int i) const { return *field(i).myClearButton(); }
    [[nodiscard]] bool mayAssign() const { return controller.assignButton()->isEnabled(); }
    [[nodiscard]] QString liveText(int number, std::size_t record = 0) const
    {
        return live->getSwitchShortcut(number)->at(4 * record + 2).text();
    }
    [[nodiscard]] QString workingText(int number, std::size_t record = 0) const
    {
        return controller.myShortcutArray()->value(number).array()->at(4 * record + 2).text();
    }
    // Returns the indexes of the visible fields, such as "01". Expects their clear buttons to be
    // visible too.
    [[nodiscard]] std::string shownFields() const
    {
        std::string shown;
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(field(i).isHidden(), clear(i).isHidden());
            shown += field(i).isHidden() ? "" : std::to_string(i);
        }
        return shown;
    }

    std::vector<std::string> calls;
    NotificationCenter center;
    // Records the notifications before the window handles them.
    NotificationLog log { center };
    FakeKeyTranslation translation;
    std::string liveWhenItBecame; // the first shortcut of button 1 then
    int becameLive = 0; // how often the live set was written
    FakeDefaultsStore ownDefaults;
    FakeDefaultsStore& defaults;
    FakeDocumentFiles attributes;
    RecordingVisibility visibility { calls };
    RecordingPanel panel { calls };
    WindowCloseObserver observer { center };
    std::shared_ptr<UserAssignFile> live = std::make_shared<UserAssignFile>();
    UserAssinableWindowController controller { services() };
};

} // namespace kestrel::test
