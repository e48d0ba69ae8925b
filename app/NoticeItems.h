#pragma once

#include <string>
#include <vector>

class QAction;
class QMenu;

namespace kestrel {

class Notices;
struct Notice;

// Shows the current notices at the top of a menu, each time the menu opens. A notice without an
// action is a disabled item.
class NoticeItems {
public:
    // Both outlive this object.
    NoticeItems(QMenu& menu, Notices& notices);

    // Does nothing while the menu is open, so that no item moves under the pointer.
    void refresh();

private:
    void update();
    void replace(const std::vector<Notice>& notices);

    QMenu& m_menu;
    Notices& m_notices;
    std::vector<std::string> m_texts; // the notices that the items show
    std::vector<QAction*> m_items; // owned by the menu
    bool m_isOpen = false;
};

} // namespace kestrel
