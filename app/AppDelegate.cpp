#include "app/AppDelegate.h"

#include "app/KeySheetSaver.h"
#include "app/LoginItemChoice.h"
#include "app/NoticeItems.h"
#include "app/QtApplicationVisibility.h"
#include "app/TrayStatusItem.h"
#include "link/ConsoleProtocol.h"
#include "monitor/ActivityWindow.h"
#include "panel/MyWindowController.h"
#include "platform/Platform.h"
#include "setup/UserAssinableWindowController.h"
#include "setup/WindowCloseObserver.h"
#include "ui_MainMenu.h"

#include <QApplication>
#include <QDialog>
#include <QMainWindow>

#include <chrono>
#include <cstdlib>

namespace kestrel {

// `assign` does not know the link, so it names the bit for itself.
static_assert(KeystrokePoster::PressedBit == ConsoleProtocol::KeyPressed);

namespace {
constexpr std::chrono::seconds SupervisionInterval { 5 };

// Native dialogs too, which have no QWindow of their own to close.
void closeDialogs()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* const dialog = qobject_cast<QDialog*>(window);
        if (dialog && dialog->isVisible())
            dialog->reject();
    }
}

std::unique_ptr<MIDIMessage> copyOf(const MIDIMessage& message)
{
    auto copy = std::make_unique<MIDIMessage>(message.sourceID());
    copy->setReadData(message.readData());
    copy->setLength(message.length());
    return copy;
}
} // namespace

AppDelegate::AppDelegate(Platform& platform, MainLoop& mainLoop, const Clock& clock)
    : m_platform(platform)
    , m_clock(clock)
    , m_activity(clock)
    , m_keyPermission(*platform.permissions, *platform.notices)
    , m_assignments(*platform.defaults, platform.recoveryFile)
    , m_notices(
          m_assignments, [this] { storeAgain(); }, m_keyPermission)
    , m_keystrokes(m_assignments, *platform.workspace, *platform.keyEvents, m_keyPermission)
    , m_connection({ *platform.midiServices, *platform.processTable, mainLoop, clock },
          [this](const MIDIMessage& message) { receiveMessage(message); })
    , m_windowCloseObserver(std::make_unique<WindowCloseObserver>(m_notificationCenter))
    , m_visibility(std::make_unique<QtApplicationVisibility>(*platform.workspace))
{
    m_connection.setReleasesLost([this] {
        m_hasLostReleases = m_isClosingMenus;
        m_platform.keyEvents->releaseAll();
    });
    m_connection.setListener(&m_activity);
    m_activeSenceTimer.setTimerType(Qt::PreciseTimer);
    m_activeSenceTimer.setInterval(SupervisionInterval);
    connect(&m_activeSenceTimer, &QTimer::timeout, this, [this] {
        m_connection.checkActiveSence();
        m_activity.notePermission(m_keyPermission.mayPostKeyEvents());
    });
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    createPanelController();
    createSetupController();
    // A file opened before the launch may have made the setup window, which then lacks the panel.
    m_userAssignableWindowController->setMyWindowController(m_myWindowController.get());
    setupStatusItem();
    m_activeSenceTimer.start();
    m_platform.workspace->setReopened([this] { userAssign(); });
}

void AppDelegate::createPanelController()
{
    if (m_myWindowController)
        return;
    m_myWindowController = std::make_unique<MyWindowController>(
        QStringLiteral("Plug-in_Panel"), *m_platform.windowTraits, *m_platform.defaults);
    m_connection.setMyWindowController(m_myWindowController.get());
}

void AppDelegate::createSetupController()
{
    if (m_userAssignableWindowController)
        return;
    m_assignments.setupShortcutKey();
    m_userAssignableWindowController = std::make_unique<UserAssinableWindowController>(
        SetupServices { { m_notificationCenter, *m_platform.keyTranslation }, *m_platform.defaults,
            *m_platform.documentFiles, *m_visibility, [this] { storeForRecovery(); } });
    m_userAssignableWindowController->setMyWindowController(m_myWindowController.get());
    m_userAssignableWindowController->initShortcut(m_assignments.myUserAssignFile());
}

void AppDelegate::setupStatusItem()
{
    if (m_statusItem)
        return;
    m_mainMenuWindow = std::make_unique<QMainWindow>();
    m_mainMenu = std::make_unique<Ui::MainMenu>();
    m_mainMenu->setupUi(m_mainMenuWindow.get());
    connect(m_mainMenu->newDocument, &QAction::triggered, this, &AppDelegate::newDocument);
    connect(m_mainMenu->openDocument, &QAction::triggered, this, &AppDelegate::openDocument);
    connect(m_mainMenu->saveDocument, &QAction::triggered, this, &AppDelegate::saveDocument);
    connect(m_mainMenu->userAssign, &QAction::triggered, this, &AppDelegate::userAssign);
    connect(m_mainMenu->activity, &QAction::triggered, this, &AppDelegate::showActivity);
    connect(m_mainMenu->saveKeySheet, &QAction::triggered, this, &AppDelegate::saveKeySheet);
    connect(m_mainMenu->kestrel, &QAction::triggered, this, &AppDelegate::kestrel);
    connect(m_mainMenu->about, &QAction::triggered, this, &AppDelegate::about);
    connect(m_mainMenu->quit, &QAction::triggered, this, &AppDelegate::quit);
    m_noticeItems = std::make_unique<NoticeItems>(*m_mainMenu->statusMenu, m_notices);
    // Refreshes the notices with the timer as well, because not every menu shows items that are
    // added just before it opens. LoginItemChoice needs no timer: it only changes a check mark.
    connect(&m_activeSenceTimer, &QTimer::timeout, this, [this] { m_noticeItems->refresh(); });
    m_loginItemChoice = std::make_unique<LoginItemChoice>(
        *m_platform.loginItem, *m_mainMenu->launchAtLogin, *m_mainMenu->statusMenu);

    m_keySheetSaver = std::make_unique<KeySheetSaver>(*m_platform.documentFiles, *m_visibility,
        [this]() -> const UserAssignFile& { return *myUserAssignFile(); });
    m_keySheetSaver->setClosed([this] { giveFrontBack(); });

    m_statusItem = std::make_unique<TrayStatusItem>(*m_mainMenu->statusMenu);
    m_statusItem->setImage(StatusImage::Offline);
    m_statusItem->show();
    m_connection.setStatusItem(m_statusItem.get());
}

void AppDelegate::applicationWillTerminate()
{
    if (std::exchange(m_terminated, true))
        return;
    m_activeSenceTimer.stop();
    m_platform.workspace->setReopened({});
    if (m_connection.client() != 0)
        m_connection.releaseMIDIReceiver();
    storeAssignments();
}

void AppDelegate::storeAssignments()
{
    const bool isStored = m_assignments.writeUserDefault();
    logIfNotStored(isStored);
    if (!isStored)
        storeForRecovery();
}

// The defaults have changes to write only if an earlier write has failed.
void AppDelegate::storeAgain()
{
    storeForRecovery();
    logIfNotStored(m_platform.defaults->synchronise());
}

void AppDelegate::storeForRecovery()
{
    logIfNotStored(m_assignments.writeRecoveryFile());
}

void AppDelegate::logIfNotStored(bool isStored) const
{
    if (!isStored)
        qWarning("The assignments could not be stored: %s", m_assignments.problem().c_str());
}

// QCoreApplication::quit() would ask AppKit to end the program, and AppKit refuses that while a
// modal window or a sheet is open. The set is stored before the windows close, which may take long,
// and the places of the windows after that.
void AppDelegate::terminate()
{
    m_ending(Ending::Storing);
    applicationWillTerminate();
    m_ending(Ending::Closing);
    closeDialogs();
    QApplication::closeAllWindows();
    if (!m_platform.defaults->synchronise())
        qWarning("The places of the windows could not be stored.");
    QCoreApplication::exit(EXIT_SUCCESS);
}

void AppDelegate::applicationOpenFiles(const QStringList& filenames)
{
    createSetupController();
    if (filenames.isEmpty())
        return;
    if (!m_userAssignableWindowController->loadFile(filenames.first(), false))
        return;
    m_userAssignableWindowController->changeShortcut(*m_assignments.myUserAssignFile());
    // A console key that is down now would post key-ups of the new set when it is released.
    m_platform.keyEvents->releaseAll();
    storeForRecovery();
}

// While the key of one message closes a menu, the main loop runs. Messages that arrive then are
// handled after that key.
void AppDelegate::receiveMessage(const MIDIMessage& message)
{
    if (m_isClosingMenus) {
        m_waiting.push_back(copyOf(message));
        return;
    }
    handleMessage(message);
    while (!m_waiting.empty()) {
        const auto next = std::move(m_waiting.front());
        m_waiting.pop_front();
        handleMessage(*next);
    }
}

void AppDelegate::handleMessage(const MIDIMessage& message)
{
    m_dispatcher.receiveMessage(message);
    m_activity.record(message);
}

void AppDelegate::redrawLCDdisplay(const MIDIMessage& message)
{
    m_myWindowController->redrawLCDdisplay(message);
    m_activity.noteShown();
}

void AppDelegate::redrawDSParea(const MIDIMessage& message)
{
    m_myWindowController->redrawDSParea(message);
    m_activity.noteShown();
}

void AppDelegate::eventKeyPost(unsigned int buttonCode)
{
    if (QApplication::activePopupWidget() && m_keystrokes.wouldPost(buttonCode))
        closeMenus();
    m_activity.noteKey(m_keystrokes.eventKeyPost(buttonCode));
    if (std::exchange(m_hasLostReleases, false))
        m_platform.keyEvents->releaseAll();
}

// An open menu of ours has the keyboard: it would take a key that is for the workstation, perhaps
// as the mnemonic of an entry. Waits until the window system has given the keyboard back, and
// handles events meanwhile.
void AppDelegate::closeMenus()
{
    m_isClosingMenus = true;
    QWidget* menu = QApplication::activePopupWidget();
    while (menu && menu->close())
        menu = QApplication::activePopupWidget();
    QGuiApplication::sync();
    m_isClosingMenus = false;
}

} // namespace kestrel
