#include "tools/demo/KeySheetAct.h"

#include "tools/stage/Person.h"

#include <iostream>
#include <stdexcept>

namespace kestrel {

namespace {
const std::string DialogTitle = "Save Key Sheet";
constexpr char DialogMnemonic = 'k';
} // namespace

void KeySheetAct::save()
{
    std::cout << "choosing \"Save Key Sheet…\" from the menu in the tray\n";
    const auto folder = std::filesystem::absolute(m_performance.pictures());
    try {
        saveAs(folder / "key-sheet.pdf"); // to print
        saveAs(folder / "key-sheet.png"); // to look at
    } catch (const std::runtime_error& error) {
        m_performance.check(error.what(), false);
    }
}

// The program writes the file when the dialog has closed.
void KeySheetAct::saveAs(const std::filesystem::path& sheet)
{
    const stage::Person person(m_performance.studio);
    std::filesystem::remove(sheet);
    person.chooseFromTray(DialogMnemonic);
    person.waitUntilShown(DialogTitle);
    person.press("ctrl+a");
    person.type(sheet.string());
    if (sheet.extension() == ".pdf")
        m_performance.photograph("key-sheet-dialog");
    person.press("Return");
    person.waitUntilGone(DialogTitle);
    m_performance.checkSoon(
        "key sheet " + sheet.string(), [&sheet] { return std::filesystem::exists(sheet); });
}

} // namespace kestrel
