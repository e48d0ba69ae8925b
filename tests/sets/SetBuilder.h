#pragma once

#include "archive/ArchiveDictionary.h"
#include "assign/ButtonEntry.h"
#include "sets/SetRoot.h"
#include "sets/SetText.h"

namespace kestrel::test {

// Builds sets as Kestrel writes them.
class SetBuilder {
public:
    SetBuilder()
    {
        for (int number = 1; number <= 12; ++number) {
            shortcuts->set(number, emptyButtonEntry());
            titles->set(number, QString());
        }
    }

    SetBuilder& title(int key, const QString& title)
    {
        titles->set(key, title);
        return *this;
    }
    SetBuilder& record(int key, std::size_t record, const ArchiveArray& elements)
    {
        const auto entry = shortcuts->value(key).array();
        for (std::size_t i = 0; i < ShortcutRecordSize; ++i)
            entry->replace(shortcutRecordOffset(record) + i, elements[i]);
        return *this;
    }
    [[nodiscard]] SetText::Root set() const
    {
        auto root = std::make_shared<ArchiveObject>(SetRoot::Classes);
        root->encodeObject(SetRoot::MyType, SetRoot::TypeTag);
        root->encodeInteger(SetRoot::MyVersion, 1);
        root->encodeObject(SetRoot::OrgShortcutArray, shortcuts);
        root->encodeObject(SetRoot::OrgShortcutTitleArray, titles);
        return root;
    }

    std::shared_ptr<ArchiveDictionary> shortcuts = std::make_shared<ArchiveDictionary>();
    std::shared_ptr<ArchiveDictionary> titles = std::make_shared<ArchiveDictionary>();
};

} // namespace kestrel::test
