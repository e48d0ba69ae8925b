#include "shortcut/FieldAdvice.h"

#include "shortcut/ControlDrawing.h"
#include "shortcut/ShortcutFieldController.h"

namespace kestrel::FieldAdvice {

namespace {

const QString Use
    = QStringLiteral("Takes any key as the shortcut, Tab, Return and Escape as well. Shift tapped "
                     "twice goes on, Option or Alt tapped twice goes back to the key");

// A refused field itself holds no key.
const MyShortcutField* otherWithFunctionKey(const MyShortcutField& field)
{
    if (!field.shortcutFields())
        return nullptr;
    for (const auto& controller : *field.shortcutFields()) {
        const MyShortcutField* other = controller ? controller->view() : nullptr;
        if (other && other->isFncKey())
            return other;
    }
    return nullptr;
}

} // namespace

QString refusal(const MyShortcutField& field)
{
    const MyShortcutField* other = field.isRefused() ? otherWithFunctionKey(field) : nullptr;
    if (!other)
        return {};
    return QStringLiteral("A key takes only one function key, F1 to F20, and %1 holds %2")
        .arg(other->accessibleName(), other->getInputCharacters().left(MostShownUnits));
}

QString toolTip(const MyShortcutField& field)
{
    const QString advice = field.isRefused() ? refusal(field) : Use;
    // As rich text, which has more than one line. The name of a key may come from a file.
    return advice.isEmpty() ? QString() : "<p>" + advice.toHtmlEscaped() + "</p>";
}

QString spoken(const MyShortcutField& field)
{
    if (!field.isRefused())
        return Use;
    const QString reason = refusal(field);
    return MyShortcutField::NotAvailable
        + (reason.isEmpty() ? QString() : QStringLiteral(". ") + reason);
}

} // namespace kestrel::FieldAdvice
