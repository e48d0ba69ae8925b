#pragma once

#include "shortcut/ClearButton.h"
#include "shortcut/ShortcutFieldController.h"
#include "tests/support/InterfaceTest.h"

namespace kestrel::test {

// Four fields with their clear buttons in one window, each loaded with an empty entry.
struct FieldBench {
    FieldBench()
    {
        for (int i = 0; i < 4; ++i) {
            fields.push_back(std::make_unique<ShortcutFieldController>(
                QRect(10, 10 + 50 * i, 171, 34), services, &window));
            clearButtons[static_cast<std::size_t>(i)]
                = new ClearButton(QRect(124, 10 + 50 * i, 56, 31), services, &window);
            clear(i).setMyShortcutfield(&field(i));
            field(i).setMyClearButton(&clear(i));
            field(i).setShortcutFields(&fields);
            field(i).setAction([this, i] { actions.push_back(i); });
            field(i).setUserAssignParam(4 * i, entry);
        }
    }
    ~FieldBench() { fields.clear(); }

    [[nodiscard]] MyShortcutField& field(int i) const
    {
        return *fields[static_cast<std::size_t>(i)]->view();
    }
    [[nodiscard]] ClearButton& clear(int i) const
    {
        return *clearButtons[static_cast<std::size_t>(i)];
    }
    // The record of the field.
    [[nodiscard]] ArchiveArray record(int i) const { return *field(i).myUserArray(); }

    NotificationCenter center;
    FakeKeyTranslation translation;
    InterfaceServices services { center, translation };
    QWidget window;
    ShortcutFields fields;
    std::array<ClearButton*, 4> clearButtons {};
    ButtonEntry entry = std::make_shared<ArchiveArray>(ArchiveArray {
        0, 0, QString(), 0, 0, 0, QString(), 0, 0, 0, QString(), 0, 0, 0, QString(), 0 });
    std::vector<int> actions; // the fields that sent actions, in order
};

} // namespace kestrel::test
