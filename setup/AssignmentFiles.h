#pragma once

#include "assign/UserAssignFile.h"

#include <QString>

#include <memory>

namespace kestrel {

class FileAttributes;

// Assignment files: a whole assignment set each.
class AssignmentFiles {
public:
    inline static const QString Extension = QStringLiteral("ZKCF");

    explicit AssignmentFiles(FileAttributes& attributes)
        : m_attributes(attributes)
    {
    }

    // Null for everything that is not an assignment file or cannot be read.
    [[nodiscard]] std::shared_ptr<UserAssignFile> read(const QString& path) const;

    // A fresh file with type and creator code, if the file system keeps such. False, with an old
    // file untouched, when it could not be written.
    [[nodiscard]] bool write(const QString& path, const UserAssignFile& set);

private:
    FileAttributes& m_attributes;
};

} // namespace kestrel
