#include "tools/selftest/utility/Probe.h"

#include "panel/PlugInPanelView.h"
#include "setup/UserAssignableButton.h"
#include "shortcut/MyShortcutField.h"
#include "tools/selftest/utility/NativeSide.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QPixmap>
#include <QTimer>

#include <unistd.h>

#include <algorithm>
#include <functional>
#include <iostream>

namespace kestrel::selftest {

namespace {
template <typename Widget> QList<Widget*> all()
{
    QList<Widget*> found;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* const self = dynamic_cast<Widget*>(window))
            found.append(self);
        for (QWidget* child : window->findChildren<QWidget*>()) {
            auto* const widget = dynamic_cast<Widget*>(child);
            if (widget && !widget->isWindow())
                found.append(widget);
        }
    }
    return found;
}

QList<MyShortcutField*> fieldsFromTop()
{
    auto fields = all<MyShortcutField>();
    std::sort(fields.begin(), fields.end(),
        [](const auto* above, const auto* below) { return above->y() < below->y(); });
    return fields;
}

QMenu* statusMenu()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* const menu = window->findChild<QMenu*>(QStringLiteral("statusMenu")))
            return menu;
    }
    return nullptr;
}

QString textOf(const QAction& item)
{
    return item.text().remove(u'&');
}

std::string areaOf(const QWidget& window)
{
    const QPoint place = window.mapToGlobal(QPoint(0, 0));
    return QStringLiteral("%1,%2,%3,%4")
        .arg(place.x())
        .arg(place.y())
        .arg(window.width())
        .arg(window.height())
        .toStdString();
}

const char* yesOrNo(bool holds)
{
    return holds ? "yes" : "no";
}
} // namespace

Probe::Probe(QObject* parent)
    : QObject(parent)
    , m_input(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&m_input, &QSocketNotifier::activated, this, [this] { read(); });
}

void Probe::read()
{
    char buffer[1024];
    const ssize_t size = ::read(STDIN_FILENO, buffer, sizeof buffer);
    m_input.setEnabled(size > 0);
    m_text.append(buffer, std::max<qsizetype>(size, 0));
    for (qsizetype end = 0; (end = m_text.indexOf('\n')) >= 0;) {
        const QString line = QString::fromUtf8(m_text.left(end));
        m_text.remove(0, end + 1);
        std::cout << "probe " << answer(line.section(u' ', 0, 0), line.section(u' ', 1))
                  << std::endl;
    }
}

std::string Probe::answer(const QString& question, const QString& argument)
{
    if (question == u"window")
        return window(argument);
    if (question == u"status")
        return status();
    if (question == u"choose")
        return choose(argument);
    if (question == u"field")
        return field(argument.toInt());
    if (question == u"focus")
        return focus();
    if (question == u"title")
        return title(argument.toInt());
    if (question == u"panel")
        return panel(argument);
    if (question == u"dialogs")
        return dialogs();
    if (question == u"hide" || question == u"unhide") {
        setApplicationHidden(question == u"hide");
        return "done";
    }
    return question == u"ready" ? "ready" : "unknown question";
}

std::string Probe::window(const QString& title)
{
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->windowTitle() != title || window->internalWinId() == 0)
            continue;
        return std::string("visible=") + yesOrNo(window->isVisible()) + " active="
            + yesOrNo(window->isActiveWindow()) + " area=" + areaOf(*window) + nativeFacts(*window);
    }
    return "visible=no";
}

std::string Probe::status()
{
    QStringList items;
    if (const QMenu* menu = statusMenu()) {
        for (const QAction* item : menu->actions()) {
            if (item->isVisible() && !item->isSeparator())
                items.append(textOf(*item));
        }
    }
    return "menu=" + items.join(u'|').toStdString() + ";" + statusItemFacts();
}

// Later, because some items open a dialog that runs the event loop.
std::string Probe::choose(const QString& item)
{
    const QMenu* menu = statusMenu();
    const auto items = menu ? menu->actions() : QList<QAction*>();
    for (QAction* each : items) {
        if (textOf(*each) != item)
            continue;
        QTimer::singleShot(0, each, &QAction::trigger);
        return "done";
    }
    return "no such item";
}

std::string Probe::field(int number)
{
    const auto fields = fieldsFromTop();
    if (number < 1 || number > fields.size())
        return "no such field";
    return "text=" + fields[number - 1]->stringValue().toStdString();
}

std::string Probe::focus()
{
    const auto fields = fieldsFromTop();
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (fields[i]->isFirstResponder() && fields[i]->isActiveWindow())
            return "field=" + std::to_string(i + 1);
    }
    return "field=none";
}

std::string Probe::title(int button)
{
    for (const auto* each : all<UserAssignableButton>()) {
        if (each->tag() == button - 1)
            return "text=" + each->uniqueName().toStdString();
    }
    return "no such button";
}

// As it is drawn, in the pixels of its screen.
std::string Probe::panel(const QString& path)
{
    const auto views = all<PlugInPanelView>();
    if (views.isEmpty())
        return "no panel";
    return views.front()->grab().save(path, "PNG") ? "done" : "not saved";
}

std::string Probe::dialogs()
{
    QStringList titles;
    for (const QDialog* dialog : all<QDialog>()) {
        if (!dialog->isVisible())
            continue;
        const QWidget* owner = dialog->parentWidget();
        titles.append(dialog->windowTitle() + QStringLiteral(" on ")
            + (owner ? owner->window()->windowTitle() : QStringLiteral("nothing")));
    }
    return "open=" + titles.join(u'|').toStdString();
}

} // namespace kestrel::selftest
