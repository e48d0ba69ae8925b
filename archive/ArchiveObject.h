#pragma once

#include "archive/ArchiveValue.h"

#include <QStringList>

#include <vector>

namespace kestrel {

// An archived object: the name of its class and its members in the order written; what a coder is
// to a class that archives itself. Always held by shared pointer.
class ArchiveObject {
public:
    // How the member stands in the archive: in the object itself, as numbers and raw bytes are
    // coded, or as a reference to an object of its own.
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
    // Null when the member is missing.
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
