#pragma once

#include "assign/UserAssignFile.h"

#include <array>

namespace kestrel {

// The working copy of an assignment set while the user edits it. It has its own entries, which it
// shares with the editor, and the names of the twelve buttons. Button numbers are 1 to 12.
class WorkingSet {
public:
    // Copies the entries of the set, and the titles of the buttons that have an entry. Entries and
    // names that the set lacks stay unchanged here. Entries that are too short are completed in the
    // set itself.
    void take(const UserAssignFile& set);
    // Copies only the titles of the buttons whose numbers are keys of the set.
    void takeTitles(const UserAssignFile& set);

    // Copies every entry into the entry of the set with the same key, and every name over the title
    // that the set has. It adds neither entries nor titles. If a button has neither an entry nor a
    // name here, its title in the set stays.
    void write(UserAssignFile& set) const;

    [[nodiscard]] ButtonEntry entry(int number) const; // null if there is none
    [[nodiscard]] QString name(int number) const; // empty for none
    void setName(int number, const QString& name); // ignores other numbers than 1 to 12

    // The entries by key. A key may belong to no button. Null before the first set was taken.
    [[nodiscard]] const std::shared_ptr<ArchiveDictionary>& myShortcutArray() const
    {
        return m_myShortcutArray;
    }

private:
    void takeTitle(const UserAssignFile& set, int number);

    std::shared_ptr<ArchiveDictionary> m_myShortcutArray;
    std::array<QString, UserAssignFile::ButtonCount> m_names;
};

} // namespace kestrel
