#pragma once

#include "archive/ArchiveError.h"
#include "archive/ArchiveObject.h"
#include "sets/JsonValue.h"

#include <memory>

// An assignment set as text. The text has all that the archive has, so that the same archive can be
// made of it. docs/file-format.md describes it, docs/set.schema.json is its JSON Schema.
namespace kestrel::SetText {

// Members of the text.
inline const QString Type = QStringLiteral("type");
inline const QString Version = QStringLiteral("version");
inline const QString Object = QStringLiteral("object"); // if it is not as Kestrel writes it
inline const QString Keys = QStringLiteral("keys");
inline const QString ShortcutOrder = QStringLiteral("shortcutOrder"); // if not that of "keys"
inline const QString TitleOrder = QStringLiteral("titleOrder");
// Members of a key.
inline const QString Key = QStringLiteral("key");
inline const QString Title = QStringLiteral("title");
inline const QString Shortcuts = QStringLiteral("shortcuts");
inline const QString Entry = QStringLiteral("entry"); // of a key whose entry is no usual one

using Root = std::shared_ptr<ArchiveObject>;

// The root object of the archive of a set. It holds no cycle.
[[nodiscard]] QByteArray text(const Root& set);

// Throws TextError. The result may still be more than an archive can hold.
[[nodiscard]] Root fromText(const QByteArray& text);

} // namespace kestrel::SetText
