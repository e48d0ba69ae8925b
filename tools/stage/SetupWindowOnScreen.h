#pragma once

#include "tools/stage/Person.h"
#include "tools/stage/SetupPlaces.h"

namespace kestrel::stage {

// Works the "User Assignable Setup" window of a running Kestrel as a person would. Buttons are
// numbered from 1 to 12, fields from 1 to 4.
class SetupWindowOnScreen {
public:
    static inline const std::string Title = SetupPlaces::Title;
    static inline const std::string LoadTitle = SetupPlaces::LoadTitle;
    static inline const std::string SaveTitle = SetupPlaces::SaveTitle;

    explicit SetupWindowOnScreen(const Studio& studio)
        : person(studio)
    {
    }

    void open() const; // from the menu in the tray
    void select(int button) const;
    void focus(int field) const;
    void clear(int field) const;
    void rename(int button, const std::string& name) const; // a second after the selection or later
    void openRenameBox(int button) const;
    void assign() const;
    void ok() const; // returns when the window is gone, like cancel()
    void cancel() const;
    void load(const std::string& path) const; // returns when the sheet is gone, like save()
    void save(const std::string& path) const;
    void openSaveSheet() const;

    Person person;

private:
    void click(SetupPlaces::Place place) const;
    void chooseFile(const std::string& sheet, const std::string& path) const;
};

} // namespace kestrel::stage
