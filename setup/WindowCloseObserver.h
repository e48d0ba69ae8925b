#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace kestrel {

class NotificationCenter;

// Posts a notification for every window of the program that closes, with the window as object.
// Popups and alerts (QMessageBox) cause none, nor does the excepted window with its sheets.
class WindowCloseObserver : public QObject {
public:
    explicit WindowCloseObserver(NotificationCenter& notificationCenter);

    void except(const QWidget& window) { m_excepted = &window; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    NotificationCenter& m_notificationCenter;
    [[nodiscard]] bool isExcepted(const QWidget& window) const;

    const QWidget* m_excepted = nullptr; // only compared
    QPointer<QWidget> m_closing; // has been asked to close and has not refused so far
};

} // namespace kestrel
