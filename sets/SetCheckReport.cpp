// The part of the check that says what it has found.

#include "sets/SetCheck.h"
#include "sets/ValueText.h"

namespace kestrel::SetCheck {

QString name(Kind kind)
{
    switch (kind) {
    case Kind::Damage:
        return QStringLiteral("damage");
    case Kind::Unused:
        return QStringLiteral("unused");
    case Kind::Duplicate:
        return QStringLiteral("duplicate");
    case Kind::NoShortcut:
        return QStringLiteral("no-shortcut");
    case Kind::UnknownKey:
        return QStringLiteral("unknown-key");
    }
    return {};
}

QByteArray json(const std::vector<Finding>& findings)
{
    JsonValue list = JsonValue::array();
    for (const Finding& finding : findings) {
        JsonValue keys = JsonValue::array();
        for (const ArchiveValue& key : finding.keys)
            keys.items.push_back(ValueWriter(key).json(key));
        JsonValue object = JsonValue::object();
        object.set(QStringLiteral("kind"), JsonValue::ofString(name(finding.kind)));
        object.set(QStringLiteral("keys"), std::move(keys));
        object.set(QStringLiteral("message"), JsonValue::ofString(finding.message));
        list.items.push_back(std::move(object));
    }
    JsonValue report = JsonValue::object();
    report.set(QStringLiteral("findings"), std::move(list));
    return jsonText(report);
}

} // namespace kestrel::SetCheck
