#pragma once

#include "app/ActivityRecorder.h"
#include "app/KeyPermission.h"
#include "app/StoringNotice.h"
#include "assign/KeystrokePoster.h"
#include "assign/StoredAssignments.h"
#include "common/NotificationCenter.h"
#include "link/MIDIConnection.h"
#include "link/MessageDispatcher.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <memory>

namespace Ui {
class MainMenu;
}
class QMainWindow;

namespace kestrel {

class ActivityWindow;
class KeySheetSaver;
class LoginItemChoice;
class MyWindowController;
class NoticeItems;
class QtApplicationVisibility;
class TrayStatusItem;
class UserAssinableWindowController;
class WindowCloseObserver;
struct Platform;

// Owns the parts of the program for the whole run, connects them, and handles the menu. Main thread
// only.
class AppDelegate final : public QObject, private MessageDispatcher::Destinations {
    Q_OBJECT

public:
    // All arguments outlive the delegate.
    AppDelegate(Platform& platform, MainLoop& mainLoop, const Clock& clock);
    ~AppDelegate() override;

    void applicationDidFinishLaunching();
    // Ends in an orderly way: stops the supervision, closes the link and stores the live set. Only
    // the first call has an effect.
    void applicationWillTerminate();
    void storeAssignments();
    // What "Quit" does: ends in that way, closes every window and leaves the event loop, whatever
    // windows are open.
    void terminate();
    // `ending` runs before each part of terminate().
    enum class Ending { Storing, Closing };
    void setEnding(std::function<void(Ending)> ending) { m_ending = std::move(ending); }
    // Keeps a copy of the live set, which the next start takes if this run is killed.
    void storeForRecovery();
    void storeAgain();
    // Opens files from the file manager: the first one becomes the live set at once.
    void applicationOpenFiles(const QStringList& filenames);

    // The timer runs from launch to termination.
    [[nodiscard]] QTimer& activeSenceTimer() { return m_activeSenceTimer; }
    [[nodiscard]] ActivityRecorder& activity() { return m_activity; }
    [[nodiscard]] Notices& notices() { return m_notices; }
    // As the link has last found them; 0 before it was first opened.
    [[nodiscard]] std::size_t consolePairs() const { return m_connection.consolePairs(); }
    // Null until it is first shown.
    [[nodiscard]] ActivityWindow* activityWindow() const { return m_activityWindow.get(); }
    // Null until the application has launched.
    [[nodiscard]] MyWindowController* myWindowController() const
    {
        return m_myWindowController.get();
    }
    [[nodiscard]] UserAssinableWindowController* userAssignableWindowController() const
    {
        return m_userAssignableWindowController.get();
    }
    [[nodiscard]] const std::shared_ptr<UserAssignFile>& myUserAssignFile() const
    {
        return m_assignments.myUserAssignFile();
    }

public slots:
    void newDocument();
    void openDocument() { } // the setup window opens and saves files
    void saveDocument() { }
    void userAssign();
    void saveKeySheet();
    void showActivity();
    void kestrel();
    void about();
    void quit();

private:
    void logIfNotStored(bool isStored) const;
    void createPanelController();
    void createSetupController();
    void setupStatusItem();
    void giveFrontBack();

    void receiveMessage(const MIDIMessage& message);
    void handleMessage(const MIDIMessage& message);
    void closeMenus();
    void answerHeartbeat() override { m_activity.noteHeartbeat(m_connection.answerHeartbeat()); }
    void redrawLCDdisplay(const MIDIMessage& message) override;
    void redrawDSParea(const MIDIMessage& message) override;
    void eventKeyPost(unsigned int buttonCode) override;

    Platform& m_platform;
    const Clock& m_clock;
    ActivityRecorder m_activity;
    KeyPermission m_keyPermission;
    StoredAssignments m_assignments;
    StoringNotice m_notices;
    KeystrokePoster m_keystrokes;
    MessageDispatcher m_dispatcher { *this };
    MIDIConnection m_connection;
    NotificationCenter m_notificationCenter;
    std::unique_ptr<WindowCloseObserver> m_windowCloseObserver;
    std::unique_ptr<QtApplicationVisibility> m_visibility;
    std::unique_ptr<QMainWindow> m_mainMenuWindow; // never shown; owns the menu
    std::unique_ptr<Ui::MainMenu> m_mainMenu;
    std::unique_ptr<NoticeItems> m_noticeItems;
    std::unique_ptr<LoginItemChoice> m_loginItemChoice;
    std::unique_ptr<KeySheetSaver> m_keySheetSaver;
    std::unique_ptr<TrayStatusItem> m_statusItem;
    std::unique_ptr<MyWindowController> m_myWindowController;
    std::unique_ptr<UserAssinableWindowController> m_userAssignableWindowController;
    std::unique_ptr<ActivityWindow> m_activityWindow; // made when it is first shown
    QTimer m_activeSenceTimer;
    bool m_terminated = false;
    bool m_isClosingMenus = false;
    bool m_hasLostReleases = false; // while a menu was being closed
    std::deque<std::unique_ptr<MIDIMessage>> m_waiting;
    std::function<void(Ending)> m_ending = [](Ending) {};
};

} // namespace kestrel
