#include "tests/end-to-end/AccessibleObject.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace kestrel::test {

namespace {
constexpr const char* Accessible = "org.a11y.atspi.Accessible";
const QString SessionConnection = QStringLiteral("kestrel-session");
const QString AccessibilityConnection = QStringLiteral("kestrel-accessibility");
constexpr const char* Action = "org.a11y.atspi.Action";
constexpr int AnswerMs = 20000;
constexpr unsigned StatesPerWord = 32;

QVariantList ask(const QDBusConnection& bus, const QDBusMessage& question)
{
    const QDBusMessage answer = bus.call(question, QDBus::Block, AnswerMs);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error((question.member() + ": " + answer.errorMessage()).toStdString());
    return answer.arguments();
}

QString addressOfBus(const QDBusConnection& session)
{
    return ask(session,
        QDBusMessage::createMethodCall(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"))
        .value(0)
        .toString();
}

template <typename Value> Value unpacked(const QVariant& variant)
{
    return qdbus_cast<Value>(variant);
}
} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const AccessibleAddress& address)
{
    argument.beginStructure();
    argument << address.service << address.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, AccessibleAddress& address)
{
    argument.beginStructure();
    argument >> address.service >> address.path;
    argument.endStructure();
    return argument;
}

AccessibleObject::AccessibleObject(QDBusConnection bus, AccessibleAddress address)
    : m_bus(std::move(bus))
    , m_address(std::move(address))
{
}

QDBusConnection AccessibleObject::busOf(const std::string& sessionBus)
{
    for (const QString& ofFormerTest : { SessionConnection, AccessibilityConnection })
        QDBusConnection::disconnectFromBus(ofFormerTest);
    qDBusRegisterMetaType<AccessibleAddress>();
    qDBusRegisterMetaType<QList<AccessibleAddress>>();
    const auto session
        = QDBusConnection::connectToBus(QString::fromStdString(sessionBus), SessionConnection);
    auto enable = QDBusMessage::createMethodCall(
        "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set");
    enable << "org.a11y.Status"
           << "IsEnabled" << QVariant::fromValue(QDBusVariant(true));
    ask(session, enable);
    return QDBusConnection::connectToBus(addressOfBus(session), AccessibilityConnection);
}

std::string AccessibleObject::tellChanges(const QDBusConnection& bus, const QString& kind)
{
    auto listen = QDBusMessage::createMethodCall("org.a11y.atspi.Registry",
        "/org/a11y/atspi/registry", "org.a11y.atspi.Registry", "RegisterEvent");
    listen << kind << QStringList() << QString();
    ask(bus, listen);
    return addressOfBus(QDBusConnection(SessionConnection)).toStdString();
}

AccessibleObject AccessibleObject::desktop(const QDBusConnection& bus)
{
    return { bus,
        { "org.a11y.atspi.Registry", QDBusObjectPath("/org/a11y/atspi/accessible/root") } };
}

QVariantList AccessibleObject::call(
    const char* interface, const char* method, const QVariantList& arguments) const
{
    auto question = QDBusMessage::createMethodCall(
        m_address.service, m_address.path.path(), interface, method);
    question.setArguments(arguments);
    return ask(m_bus, question);
}

QVariant AccessibleObject::property(const char* interface, const char* name) const
{
    const auto answer = call("org.freedesktop.DBus.Properties", "Get", { interface, name });
    return answer.value(0).value<QDBusVariant>().variant();
}

std::vector<AccessibleObject> AccessibleObject::children() const
{
    std::vector<AccessibleObject> children;
    for (const auto& address :
        unpacked<QList<AccessibleAddress>>(call(Accessible, "GetChildren").value(0)))
        children.emplace_back(m_bus, address);
    return children;
}

std::vector<std::string> AccessibleObject::childNames() const
{
    std::vector<std::string> names;
    for (const AccessibleObject& child : children())
        names.push_back(child.name());
    return names;
}

std::optional<AccessibleObject> AccessibleObject::child(
    const std::string& name, int patienceMs) const
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(patienceMs);
    for (;;) {
        for (const AccessibleObject& child : children()) {
            if (child.name() == name)
                return child;
        }
        if (std::chrono::steady_clock::now() > deadline)
            return std::nullopt;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

std::string AccessibleObject::name() const
{
    return property(Accessible, "Name").toString().toStdString();
}

std::string AccessibleObject::description() const
{
    return property(Accessible, "Description").toString().toStdString();
}

std::string AccessibleObject::role() const
{
    return call(Accessible, "GetRoleName").value(0).toString().toStdString();
}

bool AccessibleObject::hasState(State state) const
{
    const auto words = unpacked<QList<unsigned>>(call(Accessible, "GetState").value(0));
    return (words.value(state / StatesPerWord) >> (state % StatesPerWord)) & 1U;
}

std::string AccessibleObject::wholeText() const
{
    return call("org.a11y.atspi.Text", "GetText", { 0, -1 }).value(0).toString().toStdString();
}

double AccessibleObject::value() const
{
    return property("org.a11y.atspi.Value", "CurrentValue").toDouble();
}

bool AccessibleObject::grabFocus() const
{
    return call("org.a11y.atspi.Component", "GrabFocus").value(0).toBool();
}

std::vector<std::string> AccessibleObject::actions() const
{
    const int count = property(Action, "NActions").toInt();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        names.push_back(call(Action, "GetName", { i }).value(0).toString().toStdString());
    return names;
}

bool AccessibleObject::act(const std::string& action) const
{
    const auto names = actions();
    const auto found = std::ranges::find(names, action);
    return found != names.end()
        && call(Action, "DoAction", { static_cast<int>(found - names.begin()) }).value(0).toBool();
}

} // namespace kestrel::test
