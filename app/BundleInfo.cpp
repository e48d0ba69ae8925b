#include "app/BundleInfo.h"

#include "archive/ArchiveError.h"
#include "archive/PropertyList.h"

#include <QFile>
#include <QFileInfo>

namespace kestrel {

namespace {
const QString DriverBundle = QStringLiteral("/Library/Audio/MIDI Drivers/HolvikZentaMIDI.plugin");
const QString OwnBundleInfo = QStringLiteral(":/Info.plist");
} // namespace

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

std::optional<BundleInfo> BundleInfo::ofBundle(const QString& path)
{
    if (!QFileInfo(path).isDir())
        return {};
    return read(path + QStringLiteral("/Contents/Info.plist")).value_or(BundleInfo {});
}

QString aboutText(const std::optional<BundleInfo>& driver, const BundleInfo& application)
{
    if (!driver)
        return QStringLiteral("(Console:V%1)\n\n%2\n\n")
            .arg(application.shortVersion, application.copyright);
    return QStringLiteral("V%1\n(Console:V%2)\n\n%3")
        .arg(driver->shortVersion, application.shortVersion, driver->copyright);
}

QString aboutInstalled(const QString& systemRoot)
{
    return aboutText(BundleInfo::ofBundle(systemRoot + DriverBundle),
        BundleInfo::read(OwnBundleInfo).value_or(BundleInfo {}));
}

} // namespace kestrel
