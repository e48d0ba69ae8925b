#include "app/LoginItemChoice.h"

#include "platform/LoginItem.h"

#include <QAction>
#include <QMenu>

namespace kestrel {

LoginItemChoice::LoginItemChoice(LoginItem& loginItem, QAction& action, const QMenu& menu)
    : m_loginItem(loginItem)
    , m_action(action)
{
    const bool isAvailable = m_loginItem.isAvailable();
    m_action.setVisible(isAvailable);
    if (!isAvailable)
        return;
    refresh();
    connect(&menu, &QMenu::aboutToShow, this, [this] { refresh(); });
    connect(&m_action, &QAction::triggered, this, [this](bool checked) { choose(checked); });
}

void LoginItemChoice::choose(bool enabled)
{
    if (m_loginItem.setEnabled(enabled) != LoginItem::Result::Done)
        m_loginItem.showSettings();
    refresh();
}

void LoginItemChoice::refresh()
{
    m_action.setChecked(m_loginItem.isEnabled());
}

} // namespace kestrel
