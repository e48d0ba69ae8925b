#pragma once

#include "assign/UserAssignFile.h"

#include <array>

namespace kestrel {

// The working copy of an assignment set while it is edited. It has entries of its own, which the
// editor shares, and the names of the twelve buttons. Buttons are told by their numbers, 1 to 12.
class WorkingSet {
public:
    // Takes the entries of the set, and the titles of the buttons that have an entry. Everything
    // that the set lacks stays as it is here. Entries of the set that are too short are completed
    // in the set.
    void take(const UserAssignFile& set);
    // Takes only the titles, those of the buttons whose numbers are keys of the set.
    void takeTitles(const UserAssignFile& set);

    // Copies every entry into the set's own entry of the same key, and every name over the title
    // that the set has stored. It adds neither entries nor titles. The title of a button without
    // an entry here stays as long as the button has no name.
    void write(UserAssignFile& set) const;

    [[nodiscard]] ButtonEntry entry(int number) const; // null when missing
    [[nodiscard]] QString name(int number) const; // empty for none
    void setName(int number, const QString& name); // numbers of no button are ignored

    // Entries by key, keys of no button included. Null until a set was taken.
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
