#pragma once

#include "assign/UserAssignFile.h"

#include <QString>

#include <memory>

namespace kestrel {

class DocumentFiles;

// Reads and writes assignment files. Each file holds one whole assignment set.
class AssignmentFiles {
public:
    inline static const QString Extension = QStringLiteral("ZKCF");

    explicit AssignmentFiles(DocumentFiles& documents)
        : m_documents(documents)
    {
    }

    // Returns null if the file cannot be read or is no assignment file.
    [[nodiscard]] std::shared_ptr<UserAssignFile> read(const QString& path) const;

    // Writes a new file, with type and creator code if the file system stores them. Returns false
    // and logs the reason if writing failed; an old file at the path is then unchanged.
    [[nodiscard]] bool write(const QString& path, const UserAssignFile& set);

private:
    DocumentFiles& m_documents;
};

} // namespace kestrel
