#pragma once

#include "archive/Bytes.h"

#include <QString>

// Files that are replaced as a whole: after a crash, a kill, a full disk or a power cut at any
// moment the file holds either its old or its new content.
namespace kestrel::AtomicFile {

// False, with the old file untouched and nothing left behind, when the content did not reach the
// disk to its last byte.
[[nodiscard]] bool write(const QString& path, ByteView content);

// Removes what saves of this file left behind when they were killed: files of this user's, older
// than an hour, whose name is that of the file and six random letters. Letters that a person
// might have chosen, all small or all capital or a capital first, are left alone.
void removeLeftovers(const QString& path);

} // namespace kestrel::AtomicFile
