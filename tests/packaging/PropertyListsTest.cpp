#include "archive/PropertyList.h"

#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

// A property list as text: "string", true, [ item, … ], { key: value, … } in the list's order.
std::string textOf(plist_t node)
{
    std::string text;
    switch (plist_get_node_type(node)) {
    case PLIST_STRING:
        return text.append("\"").append(PropertyListNode::string(node)).append("\"");
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0 ? "true" : "false";
    }
    case PLIST_ARRAY:
        for (plist_t item : PropertyListNode::items(node))
            text.append(text.empty() ? "" : ", ").append(textOf(item));
        return "[ " + text + " ]";
    case PLIST_DICT:
        for (const auto& [key, value] : PropertyListNode::members(node))
            text.append(text.empty() ? "" : ", ").append(key).append(": ").append(textOf(value));
        return "{ " + text + " }";
    default:
        return "?";
    }
}

std::map<std::string, std::string> membersOf(const QString& path)
{
    const PropertyList list = PropertyList::fromBytes(viewOf(contentOf(path)));
    std::map<std::string, std::string> members;
    for (const auto& [key, value] : PropertyListNode::members(list.root()))
        members.emplace(key, textOf(value));
    return members;
}

TEST(InfoPlist, says_what_the_bundle_is)
{
    const std::string useOfFolders
        = "\"ZENTA Kestrel opens and saves the sets of assignments that you choose.\"";
    const auto info = membersOf(QStringLiteral(":/Info.plist"));
    EXPECT_THAT(info,
        UnorderedElementsAre(Pair("CFBundleDevelopmentRegion", "\"en\""),
            Pair("CFBundleDisplayName", "\"ZENTA Kestrel\""),
            Pair("CFBundleDocumentTypes",
                "[ { CFBundleTypeIconFile: \"zkcf\", CFBundleTypeName: \"ZENTA Kestrel "
                "Assignments\", CFBundleTypeRole: \"Editor\", LSHandlerRank: \"Owner\", "
                "LSItemContentTypes: [ \"com.holvik.kestrel.assignments\" ] } ]"),
            Pair("CFBundleExecutable", "\"ZENTA Kestrel\""),
            Pair("CFBundleIconFile", "\"kestrel\""),
            Pair("CFBundleIdentifier", "\"com.holvik.kestrel\""),
            Pair("CFBundleInfoDictionaryVersion", "\"6.0\""),
            Pair("CFBundleName", "\"ZENTA Kestrel\""), Pair("CFBundlePackageType", "\"APPL\""),
            Pair("CFBundleShortVersionString", "\"" KESTREL_VERSION "\""),
            Pair("CFBundleSignature", "\"KZLQ\""),
            Pair("CFBundleSupportedPlatforms", "[ \"MacOSX\" ]"),
            Pair("CFBundleVersion", "\"" KESTREL_VERSION "\""),
            Pair("LSApplicationCategoryType", "\"public.app-category.music\""),
            Pair("LSMinimumSystemVersion", "\"12.0\""), Pair("LSUIElement", "true"),
            Pair("NSDesktopFolderUsageDescription", useOfFolders),
            Pair("NSDocumentsFolderUsageDescription", useOfFolders),
            Pair("NSDownloadsFolderUsageDescription", useOfFolders),
            Pair("NSHighResolutionCapable", "true"),
            Pair("NSHumanReadableCopyright", "\"" KESTREL_COPYRIGHT "\""),
            Pair("NSPrincipalClass", "\"NSApplication\""),
            Pair("UTExportedTypeDeclarations",
                "[ { UTTypeIdentifier: \"com.holvik.kestrel.assignments\", UTTypeDescription: "
                "\"ZENTA Kestrel Assignments\", UTTypeIconFile: \"zkcf\", UTTypeConformsTo: [ "
                "\"public.data\", \"public.content\" ], UTTypeTagSpecification: { "
                "com.apple.ostype: [ \"USAS\" ], public.filename-extension: [ \"ZKCF\" ], "
                "public.mime-type: [ \"application/x-zenta-kestrel-assignments\" ] } } ]")));
}

TEST(Entitlements, ask_for_no_exception_from_the_hardened_runtime)
{
    const QString path = QStringLiteral(KESTREL_SOURCE "/packaging/macos/kestrel.entitlements");
    EXPECT_TRUE(membersOf(path).empty());
}

// The signing tools hand the text to a parser in the kernel that knows no comments.
TEST(Entitlements, hold_no_comment)
{
    const QString path = QStringLiteral(KESTREL_SOURCE "/packaging/macos/kestrel.entitlements");
    EXPECT_FALSE(contentOf(path).contains("<!--"));
}

} // namespace
} // namespace kestrel::test
