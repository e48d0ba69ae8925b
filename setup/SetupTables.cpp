#include "setup/SetupTables.h"

#include "common/KestrelUtilities.h"

namespace kestrel {

namespace {

InterfaceImage load(const char* name)
{
    return KestrelUtilities::imageAtPath(
        QStringLiteral("UserAssignable/") + QString::fromLatin1(name));
}

} // namespace

const SetupTables& SetupTables::shared()
{
    static const SetupTables tables {
        .BackgroundImage = load("back"),
        .ClearButtonImage = load("Clear_button/on"),
        .ClearButtonOnPressImage = load("Clear_button/on_press"),
        .ClearButtonDisableImage = load("Clear_button/disable"),
        .ClearButtonOffImage = load("Clear_button/off"),
        .LoadSaveButtonOffImage = { load("Load_Button/off"), load("Save_Button/off") },
        .LoadSaveButtonImage = { load("Load_Button/on_press"), load("Save_Button/on_press") },
        .AssignOkCancelButtonImage
        = { load("Assign_button/on"), load("OK_button/on"), load("Cancel_button/on") },
        .AssignOkCancelButtonOffImage = { load("Assign_button/on_press"),
            load("OK_button/on_press"), load("Cancel_button/on_press") },
        .AssignButtonDisableImage = load("Assign_button/disable"),
    };
    return tables;
}

QRect SetupTables::buttonFrame(int index) const
{
    const QRect& first = UserAssignableButtonFrame;
    return first.translated((first.width() + ButtonGap) * (index % ButtonColumns),
        -(first.height() + ButtonGap) * (index / ButtonColumns));
}

QRect SetupTables::fieldFrame(int index) const
{
    return ShortcutFieldFrame.translated(0, -(ShortcutFieldFrame.height() + FieldGap) * index);
}

QRect SetupTables::clearButtonFrame(int index) const
{
    return { fieldFrame(index).topLeft() + QPoint(ClearButtonOffset, 0), ClearButtonSize };
}

QRect SetupTables::inContent(const QRect& frame) const
{
    const int top = UserAssignableWindowFrame.height() - frame.y() - frame.height();
    return { QPoint(frame.x(), top), frame.size() };
}

} // namespace kestrel
