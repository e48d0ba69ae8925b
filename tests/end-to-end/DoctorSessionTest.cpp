// What kestrelctl doctor says about the desktop session.

#include "tests/end-to-end/KestrelctlBench.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>

#include <filesystem>
#include <fstream>

namespace kestrel::test {
namespace {

using testing::Contains;

class DoctorWithoutTray : public KestrelctlBench {
protected:
    DoctorWithoutTray()
        : KestrelctlBench({ .tray = false, .sessionBus = true })
    {
    }
};

// Says, as a desktop with status notifiers does, that there is a place for them.
class NotifierWatcher final : public QDBusVirtualObject {
public:
    explicit NotifierWatcher(const std::string& bus)
        : m_connection(QDBusConnection::connectToBus(QString::fromStdString(bus), "kestrel-tray"))
    {
        moveToThread(&m_thread);
        m_connection.registerVirtualObject("/StatusNotifierWatcher", this);
        m_connection.registerService("org.kde.StatusNotifierWatcher");
        m_thread.start();
    }
    ~NotifierWatcher() override
    {
        QDBusConnection::disconnectFromBus("kestrel-tray");
        m_thread.quit();
        m_thread.wait();
    }
    NotifierWatcher(const NotifierWatcher&) = delete;
    NotifierWatcher& operator=(const NotifierWatcher&) = delete;

private:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override
    {
        return bus.send(question.createReply(QVariant::fromValue(QDBusVariant(true))));
    }

    QThread m_thread;
    QDBusConnection m_connection;
};

TEST_F(DoctorWithoutTray, says_where_the_icon_is)
{
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    expectWrong(
        { "WRONG  tray        The desktop has no tray, so the icon is not shown. GNOME needs "
          "the extension AppIndicator. Starting kestrel a second time opens the setup "
          "window." });
}

TEST_F(DoctorWithoutTray, knows_the_place_of_status_notifiers)
{
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const NotifierWatcher watcher(studio.studio.sessionBus().address());
    EXPECT_THAT(
        run({ "doctor" }).lines, Contains("ok     tray        There is a place for the icon."));
}

class DoctorOfSession : public KestrelctlBench { };

TEST_F(DoctorOfSession, finds_that_keys_reach_no_native_Wayland_program)
{
    added["XDG_SESSION_TYPE"] = "wayland";
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("WRONG  session     This is a Wayland session. Keys reach X11 programs only; a "
                 "native Wayland program needs an X11 session."));
    studio.startWorkstation();
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("ok     session     This is a Wayland session, and Pro Tools is an X11 program: "
                 "keys reach it."));
}

TEST_F(DoctorOfSession, finds_that_Qt_is_told_to_use_Wayland)
{
    added["QT_QPA_PLATFORM"] = "wayland";
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("WRONG  display     QT_QPA_PLATFORM is \"wayland\". Start Kestrel with "
                 "QT_QPA_PLATFORM=xcb kestrel"));
}

TEST_F(DoctorOfSession, names_what_is_in_front)
{
    studio.startWorkstation();
    EXPECT_THAT(run({ "doctor" }).lines, Contains("ok     front       Pro Tools is in front."));
    const auto other = studio.startOtherApplication();
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains(testing::EndsWith("is in front. Keys are typed only while Pro Tools is.")));
}

TEST_F(DoctorOfSession, finds_another_program_that_opens_sets)
{
    const auto programs = studio.studio.home() / "data" / "applications";
    std::filesystem::create_directories(programs);
    const auto opensSets = [&](const std::string& entry) {
        std::ofstream(programs / entry) << "[Desktop Entry]\nType=Application\nName=Opens\n"
                                           "Exec=true %f\n";
        std::ofstream(studio.studio.configFolder() / "mimeapps.list")
            << "[Default Applications]\napplication/x-zenta-kestrel-assignments=" << entry << '\n';
    };
    opensSets("editor.desktop");
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("WRONG  file type   A double click opens sets with editor.desktop: xdg-mime "
                 "default com.holvik.kestrel.desktop application/x-zenta-kestrel-assignments"));
    opensSets("com.holvik.kestrel.desktop");
    EXPECT_THAT(run({ "doctor" }).lines,
        Contains("ok     file type   A double click opens sets in Kestrel."));
}

} // namespace
} // namespace kestrel::test
