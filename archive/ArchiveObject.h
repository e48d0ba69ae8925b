#pragma once

#include "archive/ArchiveValue.h"

#include <QStringList>

#include <vector>

namespace kestrel {

// An archived object: the names of its classes and its members in the order in which they were
// written. A class that archives itself uses it as its coder. It is always held by a shared
// pointer.
class ArchiveObject {
public:
    // Where the archive keeps the member: inside the object, like coded numbers and raw bytes, or
    // as a reference to an object of its own.
    enum class Storage { Inline, Reference };

    struct Member {
        QString name;
        ArchiveValue value;
        Storage storage = Storage::Reference;

        friend bool operator==(const Member&, const Member&) = default;
    };

    // The class and its base classes, most derived first; at least one.
    explicit ArchiveObject(QStringList classes);

    [[nodiscard]] QString className() const { return m_classes.front(); }
    [[nodiscard]] const QStringList& classes() const { return m_classes; }
    [[nodiscard]] const std::vector<Member>& members() const { return m_members; }

    [[nodiscard]] bool contains(QStringView name) const;
    // A null value when the member is missing.
    [[nodiscard]] const ArchiveValue& value(QStringView name) const;

    void encodeObject(QString name, ArchiveValue value);
    void encodeInteger(QString name, std::int64_t value);
    void append(Member member) { m_members.push_back(std::move(member)); }

    friend bool operator==(const ArchiveObject&, const ArchiveObject&) = default;

private:
    QStringList m_classes;
    std::vector<Member> m_members;
};

} // namespace kestrel
