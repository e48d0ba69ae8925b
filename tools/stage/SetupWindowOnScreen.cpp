#include "tools/stage/SetupWindowOnScreen.h"

namespace kestrel::stage {

namespace {
// The centres of the controls, in the window's content.
struct Place {
    int x;
    int y;
};
constexpr Place Load { 31, 19 };
constexpr Place Save { 89, 19 };
constexpr Place Assign { 568, 319 };
constexpr Place OK { 568, 423 };
constexpr Place Cancel { 488, 423 };

constexpr Place buttonPlace(int number)
{
    return { 75 + 98 * ((number - 1) % 4), 142 + 98 * ((number - 1) / 4) };
}

constexpr int fieldLine(int number)
{
    return 121 + 49 * (number - 1);
}
constexpr int FieldColumn = 480;
constexpr int ClearColumn = 572;
} // namespace

void SetupWindowOnScreen::open() const
{
    person.chooseFromTray('u');
    person.waitUntilShown(Title);
}

void SetupWindowOnScreen::select(int button) const
{
    const Place place = buttonPlace(button);
    click(place.x, place.y);
}

void SetupWindowOnScreen::focus(int field) const
{
    click(FieldColumn, fieldLine(field));
}

void SetupWindowOnScreen::clear(int field) const
{
    click(ClearColumn, fieldLine(field));
}

void SetupWindowOnScreen::openRenameBox(int button) const
{
    const Area window = person.windowAtRest(Title);
    const Place place = buttonPlace(button);
    person.doubleClick(window.x + place.x, window.y + place.y);
}

// The rename box opens with its text selected.
void SetupWindowOnScreen::rename(int button, const std::string& name) const
{
    openRenameBox(button);
    person.type(name);
    person.press("Return");
}

void SetupWindowOnScreen::assign() const
{
    click(Assign.x, Assign.y);
}

void SetupWindowOnScreen::ok() const
{
    click(OK.x, OK.y);
    person.waitUntilGone(Title);
}

void SetupWindowOnScreen::cancel() const
{
    click(Cancel.x, Cancel.y);
    person.waitUntilGone(Title);
}

void SetupWindowOnScreen::load(const std::string& path) const
{
    click(Load.x, Load.y);
    person.waitUntilShown(LoadTitle);
    chooseFile(LoadTitle, path);
}

void SetupWindowOnScreen::save(const std::string& path) const
{
    openSaveSheet();
    chooseFile(SaveTitle, path);
}

void SetupWindowOnScreen::openSaveSheet() const
{
    click(Save.x, Save.y);
    person.waitUntilShown(SaveTitle);
}

void SetupWindowOnScreen::click(int x, int y) const
{
    const Area window = person.windowAtRest(Title);
    person.click(window.x + x, window.y + y);
}

void SetupWindowOnScreen::chooseFile(const std::string& sheet, const std::string& path) const
{
    person.type(path);
    person.press("Return");
    person.waitUntilGone(sheet);
}

} // namespace kestrel::stage
