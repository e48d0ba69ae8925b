#include "app/NoticeItems.h"

#include "platform/Notices.h"

#include <QAction>
#include <QMenu>
#include <QPalette>

#include <algorithm>

namespace kestrel {

namespace {
// In a menu item, "&" marks a shortcut and "&&" is an ampersand.
QString itemText(const std::string& text)
{
    return QString::fromStdString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

// Disabled items are hard to read in many styles, so those of this menu get two thirds of the
// text's colour.
void makeDisabledItemsReadable(QMenu& menu)
{
    QPalette palette = menu.palette();
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const QColor back = palette.color(QPalette::Active, QPalette::Base);
    const auto mixed = [](int strong, int weak) { return (2 * strong + weak) / 3; };
    const QColor quiet(mixed(text.red(), back.red()), mixed(text.green(), back.green()),
        mixed(text.blue(), back.blue()));
    for (const auto role : { QPalette::Text, QPalette::WindowText, QPalette::ButtonText })
        palette.setColor(QPalette::Disabled, role, quiet);
    menu.setPalette(palette);
}
} // namespace

NoticeItems::NoticeItems(QMenu& menu, Notices& notices)
    : m_menu(menu)
    , m_notices(notices)
{
    makeDisabledItemsReadable(menu);
    // QMenu::isVisible() is false for a menu that the system shows.
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [this] {
        update();
        m_isOpen = true;
    });
    QObject::connect(&menu, &QMenu::aboutToHide, &menu, [this] { m_isOpen = false; });
    update();
}

void NoticeItems::refresh()
{
    if (!m_isOpen)
        update();
}

void NoticeItems::update()
{
    const std::vector<Notice> notices = m_notices.current();
    // Unchanged items stay: after each change the desktop fetches the whole menu again.
    if (!std::equal(notices.begin(), notices.end(), m_texts.begin(), m_texts.end(),
            [](const Notice& notice, const std::string& text) { return notice.text == text; }))
        replace(notices);
}

void NoticeItems::replace(const std::vector<Notice>& notices)
{
    for (QAction* const item : m_items)
        delete item;
    m_items.clear();
    m_texts.clear();
    QAction* const first = m_menu.actions().value(0);
    const auto insert = [this, first](QAction* item) {
        m_menu.insertAction(first, item);
        m_items.push_back(item);
    };
    for (const Notice& notice : notices) {
        auto* const item = new QAction(itemText(notice.text), &m_menu);
        item->setEnabled(static_cast<bool>(notice.act));
        if (notice.act)
            QObject::connect(item, &QAction::triggered, item, notice.act);
        insert(item);
        m_texts.push_back(notice.text);
    }
    if (notices.empty())
        return;
    auto* const separator = new QAction(&m_menu);
    separator->setSeparator(true);
    insert(separator);
}

} // namespace kestrel
