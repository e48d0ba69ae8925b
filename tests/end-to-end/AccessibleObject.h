#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {

// The address of an accessible object on the accessibility bus.
struct AccessibleAddress {
    QString service;
    QDBusObjectPath path;
};
QDBusArgument& operator<<(QDBusArgument& argument, const AccessibleAddress& address);
const QDBusArgument& operator>>(const QDBusArgument& argument, AccessibleAddress& address);

// An object of a program, as a screen reader gets it through AT-SPI. Throws std::runtime_error when
// the program does not answer.
class AccessibleObject {
public:
    // With the numbers of AtspiStateType.
    enum State : unsigned { Checked = 4, Editable = 7, Enabled = 8, Focused = 12, Showing = 25 };

    AccessibleObject(QDBusConnection bus, AccessibleAddress address);

    // The accessibility bus of this session bus, switched on for all programs.
    [[nodiscard]] static QDBusConnection busOf(const std::string& sessionBus);
    // Asks all programs to tell their changes of that kind, and returns the address of the bus on
    // which they do so. A kind is "object:property-change:accessible-name", for instance.
    [[nodiscard]] static std::string tellChanges(const QDBusConnection& bus, const QString& kind);
    // The parent of all programs.
    [[nodiscard]] static AccessibleObject desktop(const QDBusConnection& bus);

    [[nodiscard]] std::vector<AccessibleObject> children() const;
    [[nodiscard]] std::vector<std::string> childNames() const;
    // The first child with that name. No value if there is none after `patienceMs`.
    [[nodiscard]] std::optional<AccessibleObject> child(
        const std::string& name, int patienceMs = 20000) const;

    [[nodiscard]] std::string path() const { return m_address.path.path().toStdString(); }
    [[nodiscard]] std::string name() const;
    [[nodiscard]] std::string description() const;
    [[nodiscard]] std::string role() const; // the name of the role
    [[nodiscard]] bool hasState(State state) const;
    [[nodiscard]] std::string wholeText() const;
    [[nodiscard]] double value() const;
    bool grabFocus() const;
    [[nodiscard]] std::vector<std::string> actions() const;
    bool act(const std::string& action) const;

private:
    [[nodiscard]] QVariantList call(
        const char* interface, const char* method, const QVariantList& arguments = {}) const;
    [[nodiscard]] QVariant property(const char* interface, const char* name) const;

    QDBusConnection m_bus;
    AccessibleAddress m_address;
};

} // namespace kestrel::test

Q_DECLARE_METATYPE(kestrel::test::AccessibleAddress)
