#pragma once

#include <QObject>

class QAction;
class QMenu;

namespace kestrel {

class LoginItem;

// The menu's choice of starting at login. It shows what the system says each time the menu opens,
// since the user can change it there as well. Main thread only.
class LoginItemChoice final : public QObject {
public:
    // All of it outlives the choice.
    LoginItemChoice(LoginItem& loginItem, QAction& action, const QMenu& menu);

private:
    void choose(bool enabled);
    void refresh();

    LoginItem& m_loginItem;
    QAction& m_action;
};

} // namespace kestrel
