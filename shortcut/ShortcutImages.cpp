#include "shortcut/ShortcutImages.h"

#include "common/KestrelUtilities.h"

namespace kestrel {

const ShortcutImages& ShortcutImages::shared()
{
    const auto load
        = [](const char* name) { return KestrelUtilities::imageAtPath(QString::fromLatin1(name)); };
    static const ShortcutImages images {
        .FiledEnableImage = load("UserAssignable/Text_Box/enable"),
        .FieldDisableImage = load("UserAssignable/Text_Box/disable"),
        .ClearButtonImage = load("UserAssignable/Clear_button/on"),
        .ClearButtonOnPressImage = load("UserAssignable/Clear_button/on_press"),
        .ClearButtonDisableImage = load("UserAssignable/Clear_button/disable"),
    };
    return images;
}

} // namespace kestrel
