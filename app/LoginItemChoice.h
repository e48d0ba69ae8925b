#pragma once

#include <QObject>

class QAction;
class QMenu;

namespace kestrel {

class LoginItem;

// The menu item "Launch at Login". It asks the system each time the menu opens, because the user
// can change the setting there as well. Main thread only.
class LoginItemChoice final : public QObject {
public:
    // All of them outlive this object.
    LoginItemChoice(LoginItem& loginItem, QAction& action, const QMenu& menu);

private:
    void choose(bool enabled);
    void refresh();

    LoginItem& m_loginItem;
    QAction& m_action;
};

} // namespace kestrel
