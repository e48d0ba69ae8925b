#include "tools/artwork/Pictures.h"

#include "tools/artwork/ApplicationIcons.h"
#include "tools/artwork/SetupBack.h"
#include "tools/artwork/SetupKeys.h"
#include "tools/artwork/SetupLettering.h"
#include "tools/artwork/StatusIcons.h"

namespace kestrel::artwork {

namespace {

using Pictures = std::vector<Picture>;

// Adds the picture at its natural size and at twice the resolution.
void add(Pictures& pictures, const char* name, const std::function<QImage(int)>& draw)
{
    const QString stem = QStringLiteral("images/") + QLatin1String(name);
    pictures.push_back({ stem + QStringLiteral(".png"), [draw] { return draw(1); } });
    pictures.push_back({ stem + QStringLiteral("@2x.png"), [draw] { return draw(2); } });
}

void addStatus(Pictures& pictures)
{
    add(pictures, "kestrel_offline_16x16", [](int s) { return drawStatusIcon(Link::Offline, s); });
    add(pictures, "kestrel_online_16x16", [](int s) { return drawStatusIcon(Link::Online, s); });
}

void addSetup(Pictures& pictures)
{
    add(pictures, "UserAssignable/back", drawSetupBack);
    add(pictures, "UserAssignable/User_Assignable_Button/on",
        [](int s) { return drawUserAssignableKey(KeyLight::On, s); });
    add(pictures, "UserAssignable/User_Assignable_Button/off",
        [](int s) { return drawUserAssignableKey(KeyLight::Off, s); });
    add(pictures, "UserAssignable/Key_Numbers/below",
        [](int s) { return drawKeyNumbers(NumberStyle::BelowKey, s); });
    add(pictures, "UserAssignable/Key_Numbers/heading",
        [](int s) { return drawKeyNumbers(NumberStyle::InHeading, s); });
    add(pictures, "UserAssignable/Legend/option_command",
        [](int s) { return drawModifierNames(ModifierNames::OptionCommand, s); });
    add(pictures, "UserAssignable/Legend/alt_super",
        [](int s) { return drawModifierNames(ModifierNames::AltSuper, s); });
    add(pictures, "UserAssignable/Assign_button/glow", drawButtonGlow);
    add(pictures, "UserAssignable/Text_Box/enable",
        [](int s) { return drawTextBox(FieldState::Enabled, s); });
    add(pictures, "UserAssignable/Text_Box/disable",
        [](int s) { return drawTextBox(FieldState::Disabled, s); });
}

void addPushButtons(Pictures& pictures)
{
    const auto button = [&](const char* name, const char* word, ButtonFace face) {
        const QString text = QLatin1String(word);
        add(pictures, name, [text, face](int s) { return drawPushButton(text, face, s); });
    };
    button("UserAssignable/Clear_button/on", "CLEAR", ButtonFace::Resting);
    button("UserAssignable/Clear_button/on_press", "CLEAR", ButtonFace::Pressed);
    button("UserAssignable/Clear_button/disable", "CLEAR", ButtonFace::Disabled);
    button("UserAssignable/Clear_button/off", "CLEAR", ButtonFace::Unlit);
    button("UserAssignable/Load_Button/off", "LOAD", ButtonFace::Resting);
    button("UserAssignable/Load_Button/on_press", "LOAD", ButtonFace::Pressed);
    button("UserAssignable/Save_Button/off", "SAVE", ButtonFace::Resting);
    button("UserAssignable/Save_Button/on_press", "SAVE", ButtonFace::Pressed);
    button("UserAssignable/Assign_button/on", "ASSIGN", ButtonFace::Lit);
    button("UserAssignable/Assign_button/on_press", "ASSIGN", ButtonFace::Pressed);
    button("UserAssignable/Assign_button/disable", "ASSIGN", ButtonFace::Disabled);
    button("UserAssignable/OK_button/on", "OK", ButtonFace::Resting);
    button("UserAssignable/OK_button/on_press", "OK", ButtonFace::Pressed);
    button("UserAssignable/Cancel_button/on", "CANCEL", ButtonFace::Resting);
    button("UserAssignable/Cancel_button/on_press", "CANCEL", ButtonFace::Pressed);
}

void addIcons(Pictures& pictures)
{
    for (const int size : { 16, 22, 24, 32, 48, 64, 128, 256, 512, 1024 }) {
        pictures.push_back({ QStringLiteral("icons/kestrel-%1.png").arg(size),
            [size] { return drawApplicationIcon(size); } });
        pictures.push_back({ QStringLiteral("icons/zkcf-%1.png").arg(size),
            [size] { return drawDocumentIcon(size); } });
    }
}

} // namespace

std::vector<Picture> allPictures()
{
    Pictures pictures;
    addStatus(pictures);
    addSetup(pictures);
    addPushButtons(pictures);
    addIcons(pictures);
    return pictures;
}

} // namespace kestrel::artwork
