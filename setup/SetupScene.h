#pragma once

#include "assign/UserAssignFile.h"
#include "platform/KeyTranslation.h"
#include "setup/SetupTables.h"

#include <bitset>

class QPainter;

namespace kestrel {

// What changes on the background of the setup window while the user edits. Indices are 0-based.
struct SetupScene {
    int key = 0; // whose shortcuts the fields show; the program may select a key that is none
    std::bitset<UserAssignFile::ButtonCount> numbered; // keys that show their number themselves
    std::bitset<SetupTables::FieldCount> used; // fields that are shown
    int focused = -1; // the field with the keyboard focus; -1 for none
    bool isWaiting = false; // something waits for Assign
    ModifierNames names = ModifierNames::OptionCommand;

    // In units of the content, with the origin at the upper left.
    void draw(QPainter& painter) const;

    // The name of the heading and those of the legend, for assistive technology.
    [[nodiscard]] QString heading() const;

    friend bool operator==(const SetupScene&, const SetupScene&) = default;

private:
    [[nodiscard]] bool isKey() const { return key >= 0 && key < UserAssignFile::ButtonCount; }
    void drawNumbers(QPainter& painter) const;
    void drawFields(QPainter& painter) const;
};

} // namespace kestrel
