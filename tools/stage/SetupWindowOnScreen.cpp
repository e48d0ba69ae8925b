#include "tools/stage/SetupWindowOnScreen.h"

namespace kestrel::stage {

void SetupWindowOnScreen::open() const
{
    person.chooseFromTray('u');
    person.waitUntilShown(Title);
}

void SetupWindowOnScreen::select(int button) const
{
    click(SetupPlaces::button(button));
}

void SetupWindowOnScreen::focus(int field) const
{
    click(SetupPlaces::field(field));
}

void SetupWindowOnScreen::clear(int field) const
{
    click(SetupPlaces::clearButton(field));
}

void SetupWindowOnScreen::openRenameBox(int button) const
{
    const Area window = person.windowAtRest(Title);
    const auto place = SetupPlaces::button(button);
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
    click(SetupPlaces::Assign);
}

void SetupWindowOnScreen::ok() const
{
    click(SetupPlaces::OK);
    person.waitUntilGone(Title);
}

void SetupWindowOnScreen::cancel() const
{
    click(SetupPlaces::Cancel);
    person.waitUntilGone(Title);
}

void SetupWindowOnScreen::load(const std::string& path) const
{
    click(SetupPlaces::Load);
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
    click(SetupPlaces::Save);
    person.waitUntilShown(SaveTitle);
}

void SetupWindowOnScreen::click(SetupPlaces::Place place) const
{
    const Area window = person.windowAtRest(Title);
    person.click(window.x + place.x, window.y + place.y);
}

void SetupWindowOnScreen::chooseFile(const std::string& sheet, const std::string& path) const
{
    person.type(path);
    person.press("Return");
    person.waitUntilGone(sheet);
}

} // namespace kestrel::stage
