// What kestrelctl doctor says about the desktop session.

#include "tests/end-to-end/KestrelctlBench.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>

namespace kestrel::test {
namespace {

using testing::Contains;
using testing::StartsWith;

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

} // namespace
} // namespace kestrel::test
