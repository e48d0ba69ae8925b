#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace kestrel {

class NotificationCenter;

// Tells the notification centre of every window of the program that closes, with the window as
// object. Popups are no windows in this sense, and alerts are not closed but taken away.
class WindowCloseObserver : public QObject {
public:
    explicit WindowCloseObserver(NotificationCenter& notificationCenter);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    NotificationCenter& m_notificationCenter;
    QPointer<QWidget> m_closing; // asked to, and not refused so far
};

} // namespace kestrel
