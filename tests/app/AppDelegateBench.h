#pragma once

#include "app/AppDelegate.h"
#include "panel/MyWindowController.h"
#include "platform/Platform.h"
#include "setup/UserAssinableWindowController.h"
#include "tests/fakes/FakeKeyEvents.h"
#include "tests/fakes/FakeMIDIServices.h"
#include "tests/fakes/FakeSystem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualMainLoop.h"

#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QTimerEvent>

#include <gtest/gtest.h>

#include <stdexcept>

namespace kestrel::test {

class NoKeyTranslation final : public KeyTranslation {
public:
    [[nodiscard]] std::optional<TranslatedKey> translate(const NativeKeyEvent&) override
    {
        return {};
    }
    [[nodiscard]] ModifierNames modifierNames() const override
    {
        return ModifierNames::OptionCommand;
    }
};

// A platform in memory, and a folder for files.
class PlatformBench {
public:
    PlatformBench()
        : midiServices(*new FakeMIDIServices)
        , workspace(*new FakeWorkspace)
        , keyEvents(*new FakeKeyEvents)
        , processes(*new FakeProcessTable)
        , permissions(*new FakePermissions)
        , loginItem(*new FakeLoginItem)
        , defaults(*new FakeDefaultsStore)
    {
        platform.midiServices.reset(&midiServices);
        platform.workspace.reset(&workspace);
        platform.keyEvents.reset(&keyEvents);
        platform.processTable.reset(&processes);
        platform.defaults.reset(&defaults);
        platform.keyTranslation = std::make_unique<NoKeyTranslation>();
        platform.documentFiles = std::make_unique<FakeDocumentFiles>();
        platform.windowTraits = std::make_unique<FakeWindowTraits>();
        platform.permissions.reset(&permissions);
        platform.loginItem.reset(&loginItem);
        platform.notices = std::make_unique<FakeNotices>();
        platform.recoveryFile = recoveryFile().toStdString();
        workspace.hidesByItself = false;
        processes.names = { "Pro Tools" };
    }
    PlatformBench(const PlatformBench&) = delete;
    PlatformBench& operator=(const PlatformBench&) = delete;

    // The content of a set file whose first key has this title.
    static QByteArray setWithTitle(const QString& title)
    {
        UserAssignFile set;
        set.initShortcutArray();
        set.setShortcutTitle(title, ArchiveValue(1));
        const auto image = set.fileImage();
        return { reinterpret_cast<const char*>(image.data()),
            static_cast<qsizetype>(image.size()) };
    }

    QString write(const QString& name, const QByteArray& content)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

    [[nodiscard]] QString recoveryFile() const { return folder.filePath("recovery.ZKCF"); }

    FakeMIDIServices& midiServices;
    FakeWorkspace& workspace;
    FakeKeyEvents& keyEvents;
    FakeProcessTable& processes;
    FakePermissions& permissions;
    FakeLoginItem& loginItem;
    FakeDefaultsStore& defaults;
    ManualMainLoop mainLoop;
    ManualClock clock;
    Platform platform;
    QTemporaryDir folder;
};

// The application delegate on that platform. The application has not launched yet.
class AppDelegateBench : public PlatformBench {
public:
    [[nodiscard]] MyWindowController& panel() const { return *delegate->myWindowController(); }
    [[nodiscard]] UserAssinableWindowController& setup() const
    {
        return *delegate->userAssignableWindowController();
    }

    // Delivers a packet from the console. The first call connects the console.
    void receive(const Bytes& packet)
    {
        if (midiServices.deviceList.empty()) {
            midiServices.deviceList = { device(1, "ZENTA", 5) };
            tick(); // arms the supervision
            tick(); // opens the link
        }
        midiServices.deliver({ packet });
        mainLoop.turn();
    }

    void tick() const
    {
        QTimer& timer = delegate->activeSenceTimer();
        QTimerEvent event(timer.timerId());
        QCoreApplication::sendEvent(&timer, &event);
    }

    [[nodiscard]] static QMenu& menu()
    {
        for (QWidget* widget : QApplication::allWidgets()) {
            if (widget->objectName() == QLatin1String("statusMenu"))
                return *qobject_cast<QMenu*>(widget);
        }
        throw std::logic_error("there is no menu");
    }

    // Ends in a main loop, as the program does: Qt starts no loop after an end without one, and so
    // no dialog of a later test either.
    void terminate() const
    {
        QTimer::singleShot(0, qApp, [this] { delegate->terminate(); });
        QCoreApplication::exec();
    }

    // Opens the about box, closes it and returns its informative text.
    QString lookAtAboutBox()
    {
        QString text;
        QTimer look; // ends with this function, also if no box comes up
        look.setSingleShot(true);
        QObject::connect(&look, &QTimer::timeout, [&text] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text(), QStringLiteral("ZENTA Kestrel"));
            EXPECT_EQ(box->icon(), QMessageBox::Warning);
            EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
            text = box->informativeText();
            box->accept();
        });
        look.start(0);
        delegate->about();
        return text;
    }

    [[nodiscard]] QString liveTitle() const
    {
        return delegate->myUserAssignFile()->getShortcutTitle(ArchiveValue(1)).value();
    }

    std::unique_ptr<AppDelegate> delegate
        = std::make_unique<AppDelegate>(platform, mainLoop, clock);
};

// A message that fills the first zone of the display with the letter A.
inline const Bytes ZoneOfA { 0xF0, 0, 0, 0x66, 5, 0, 0x12, 0, 'A', 'A', 'A', 'A', 'A', 'A', 'A',
    'A', 'A', 'A', 0xF7 };

class LaunchedBench : public AppDelegateBench {
public:
    LaunchedBench() { delegate->applicationDidFinishLaunching(); }
};

} // namespace kestrel::test
