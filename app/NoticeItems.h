#pragma once

#include <string>
#include <vector>

class QAction;
class QMenu;

namespace kestrel {

class Notices;
struct Notice;

// Keeps the notices at the top of a menu, as they stand whenever the menu is about to be shown.
// A notice that nothing can be done about is an item that cannot be chosen.
class NoticeItems {
public:
    // Both outlive it.
    NoticeItems(QMenu& menu, Notices& notices);

    // Nothing happens while the menu is open: items do not move under somebody's pointer.
    void refresh();

private:
    void update();
    void replace(const std::vector<Notice>& notices);

    QMenu& m_menu;
    Notices& m_notices;
    std::vector<std::string> m_texts; // as the items show them
    std::vector<QAction*> m_items; // owned by the menu
    bool m_isOpen = false;
};

} // namespace kestrel
