#include "app/BundleInfo.h"

#include "common/ArchiveError.h"
#include "common/PropertyList.h"

#include <QFile>

namespace kestrel {

std::optional<BundleInfo> BundleInfo::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    try {
        const PropertyList list = PropertyList::fromBytes(viewOf(file.readAll()));
        if (plist_get_node_type(list.root()) != PLIST_DICT)
            return {};
        BundleInfo info;
        for (const auto& [key, node] : PropertyListNode::members(list.root())) {
            if (plist_get_node_type(node) != PLIST_STRING)
                continue;
            const QString text = QString::fromStdString(PropertyListNode::string(node));
            if (key == "CFBundleShortVersionString")
                info.shortVersion = text;
            else if (key == "NSHumanReadableCopyright")
                info.copyright = text;
        }
        return info;
    } catch (const ArchiveError&) {
        return {};
    }
}

QString aboutText(const std::optional<BundleInfo>& driver, const BundleInfo& application)
{
    if (!driver)
        return QStringLiteral("(Console:V%1)\n\n%2\n\n")
            .arg(application.shortVersion, application.copyright);
    return QStringLiteral("V%1\n(Console:V%2)\n\n%3")
        .arg(driver->shortVersion, application.shortVersion, driver->copyright);
}

} // namespace kestrel
