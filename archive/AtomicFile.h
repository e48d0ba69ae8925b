#pragma once

#include "archive/Bytes.h"

#include <QString>

// Replaces files as a whole. After a crash, a kill, a full disk or a power cut at any moment the
// file has either its old or its new content.
namespace kestrel::AtomicFile {

struct Result {
    QString problem; // the system's words for it; empty after success

    explicit operator bool() const { return problem.isEmpty(); }
};

// Fails when not all of the content reached the disk; then the old file is unchanged and no other
// file is left behind. A link stays one, and the file to which it leads need not exist yet.
[[nodiscard]] Result write(const QString& path, ByteView content);

// Removes the temporary files that killed saves of this file left behind, unless one of our
// processes writes in the folder now. They belong to this user, have been unchanged for a minute
// and are named like the file with six random letters added. Endings that a person might have
// chosen (all small, all capital, or only the first letter capital) are left alone.
void removeLeftovers(const QString& path);

// Removes the file if it has this content and none of our processes writes in the folder now.
bool removeIfStill(const QString& path, ByteView content);

} // namespace kestrel::AtomicFile
