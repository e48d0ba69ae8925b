// The part of the setup window that shows on the background what is edited.

#include "assign/ModifierGlyphs.h"
#include "setup/KeyTwins.h"
#include "setup/UserAssinableWindowController.h"
#include "shortcut/ImageButton.h"

namespace kestrel {

namespace {

constexpr std::size_t ShortcutsHeading = 1; // among the engravings

QString named(ModifierFlags flag, const char* name)
{
    for (const ModifierGlyph& modifier : ModifierGlyphs) {
        if (modifier.flag == flag)
            return modifier.glyph.toString() + u' ' + QLatin1String(name);
    }
    return {};
}

} // namespace

void UserAssinableWindowController::setupEngravings()
{
    const QWidget* const cancel = m_assignOkCancelButtons[2];
    std::vector<Engraving> engravings {
        { QAccessible::Heading, QStringLiteral("User assignable keys"), { 34, 61, 132, 13 },
            m_userAssignableButtons.front()->view() },
        { QAccessible::Heading, QStringLiteral("Shortcuts"), { 428, 61, 88, 13 },
            m_shortcutFields.front()->view() },
    };
    const auto addLegend = [&, cancel](ModifierFlags flag, const char* name, QRect frame) {
        engravings.push_back({ QAccessible::StaticText, named(flag, name), frame, cancel });
    };
    const bool isApple
        = m_services.interface.keyTranslation.modifierNames() == ModifierNames::OptionCommand;
    addLegend(Modifier::Shift, "Shift", { 428, 359, 46, 14 });
    addLegend(Modifier::Option, isApple ? "Option" : "Alt", { 519, 359, isApple ? 54 : 34, 14 });
    addLegend(Modifier::Control, "Control", { 428, 378, 62, 14 });
    addLegend(
        Modifier::Command, isApple ? "Command" : "Super", { 519, 378, isApple ? 64 : 48, 14 });
    m_window->setEngravings(std::move(engravings));
    refreshScene();
}

void UserAssinableWindowController::refreshMarks()
{
    const KeyTwins twins(m_workingSet);
    for (const auto& controller : m_userAssignableButtons) {
        const int key = controller->view()->tag();
        controller->view()->setMarks({ m_unassigned.contains(key), twins.of(key) });
    }
}

void UserAssinableWindowController::refreshScene()
{
    if (m_shortcutFields.size() < SetupTables::FieldCount || !assignButton())
        return;
    SetupScene scene;
    scene.key = m_userAssignableButtons.front()->currentButtonId();
    for (std::size_t index = 0; index < m_userAssignableButtons.size(); ++index)
        scene.numbered[index] = m_userAssignableButtons[index]->view()->showsItsNumber();
    for (int index = 0; index < SetupTables::FieldCount; ++index) {
        const MyShortcutField* field = getMyShortcutField(index);
        scene.used[static_cast<std::size_t>(index)] = !field->isHidden();
        if (field->hasFocus())
            scene.focused = index;
    }
    scene.isWaiting = assignButton()->isEnabled();
    scene.names = m_services.interface.keyTranslation.modifierNames();
    m_window->setScene(scene);
    m_window->renameEngraving(ShortcutsHeading, scene.heading());
}

} // namespace kestrel
