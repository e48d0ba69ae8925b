#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <chrono>
#include <vector>

namespace kestrel::test {

// The changes of descriptions, and the objects that come to be shown, as programs tell them on the
// accessibility bus. They arrive while events of the application are processed.
class AccessibleEvents : public QObject {
    Q_OBJECT

public:
    struct Change {
        QString path; // of the object
        std::chrono::steady_clock::time_point time;
    };

    // Asks the programs for these events, as a screen reader does.
    explicit AccessibleEvents(QDBusConnection bus);

    [[nodiscard]] const std::vector<Change>& descriptions() const { return m_descriptions; }
    [[nodiscard]] const std::vector<Change>& shown() const { return m_shown; }

private slots:
    void propertyChanged(const QDBusMessage& signal);
    void stateChanged(const QDBusMessage& signal);

private:
    std::vector<Change> m_descriptions;
    std::vector<Change> m_shown;
};

} // namespace kestrel::test
