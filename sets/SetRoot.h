#pragma once

#include "archive/ArchiveObject.h"

#include <QStringList>

#include <array>

// The root object of the archive of an assignment set, as UserAssignFile encodes it.
namespace kestrel::SetRoot {

inline const QString MyType = QStringLiteral("myType");
inline const QString MyVersion = QStringLiteral("myVersion");
inline const QString OrgShortcutArray = QStringLiteral("orgShortcutArray");
inline const QString OrgShortcutTitleArray = QStringLiteral("orgShortcutTitleArray");

inline const QString ClassName = QStringLiteral("UserAssignFile");
inline const QString TypeTag = QStringLiteral("PT_UserAssign");
inline const QStringList Classes { ClassName, QStringLiteral("NSObject") };

// The order in which the members are written.
inline const std::array Members { MyType, MyVersion, OrgShortcutArray, OrgShortcutTitleArray };

[[nodiscard]] inline ArchiveObject::Storage storageOf(const QString& member)
{
    return member == MyVersion ? ArchiveObject::Storage::Inline : ArchiveObject::Storage::Reference;
}

} // namespace kestrel::SetRoot
