#include "setup/KeyAdvice.h"

#include "setup/UserAssignableButton.h"
#include "shortcut/ControlDrawing.h"

namespace kestrel::KeyAdvice {

namespace {
// After a click the first field has the focus, and takes F2 and Return as shortcuts.
const QString HowToRename
    = QStringLiteral("Double-click to name it, or press F2 or Return while the key has the focus");
const QString NotYet = QStringLiteral("Can be named once it has a shortcut");
const QString NoLonger = QStringLiteral("Can be renamed once it has a shortcut again");
} // namespace

QString toolTip(const UserAssignableButton& key)
{
    QStringList lines { QStringLiteral("U%1").arg(key.tag() + 1) };
    if (!key.uniqueName().isEmpty())
        lines.front() += QStringLiteral(" \u00B7 ") + key.uniqueName();
    if (key.mayBeRenamed())
        lines.append(key.spokenShortcuts());
    lines.append(key.marks().words());
    if (key.mayBeRenamed())
        lines.append(HowToRename);
    else
        lines.append(key.uniqueName().isEmpty() ? NotYet : NoLonger);
    for (QString& line : lines)
        line.truncate(MostShownUnits);
    return lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

} // namespace kestrel::KeyAdvice
