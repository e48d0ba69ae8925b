#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace kestrel {

class NotificationCenter;

// Posts a notification for every window of the program that closes, with the window as object.
// Popups and alerts (QMessageBox) cause none.
class WindowCloseObserver : public QObject {
public:
    explicit WindowCloseObserver(NotificationCenter& notificationCenter);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    NotificationCenter& m_notificationCenter;
    QPointer<QWidget> m_closing; // has been asked to close and has not refused so far
};

} // namespace kestrel
