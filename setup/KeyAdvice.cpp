#include "setup/KeyAdvice.h"

#include "setup/UserAssignableButton.h"

namespace kestrel::KeyAdvice {

namespace {
const QString HowToRename = QStringLiteral("Double-click, or press F2 or Return, to name it");
const QString NotYet = QStringLiteral("Can be named once it has a shortcut");
} // namespace

QString toolTip(const UserAssignableButton& key)
{
    QStringList lines { QStringLiteral("U%1").arg(key.tag() + 1) };
    if (!key.uniqueName().isEmpty())
        lines.front() += QStringLiteral(" \u00B7 ") + key.uniqueName();
    if (key.mayBeRenamed())
        lines.append(key.spokenShortcuts());
    lines.append(key.marks().words());
    lines.append(key.mayBeRenamed() ? HowToRename : NotYet);
    return lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

} // namespace kestrel::KeyAdvice
