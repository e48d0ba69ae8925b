#include "tests/packaging/PackagingBench.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// For gmock's messages.
static void PrintTo(const QString& text, std::ostream* out)
{
    *out << text.toStdString();
}

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QStringList forThisMac { "--arch", "arm64" };
const QStringList forOthers { "--arch", "arm64", "--identity",
    "Developer ID Application: Holvik (ABCDE12345)", "--notary-profile", "kestrel" };

const QString app = QStringLiteral("build/package/content/ZENTA Kestrel.app");
const QString program = QStringLiteral("MacOS/ZENTA Kestrel");
const QString companion = QStringLiteral("MacOS/kestrelctl");

bool succeeded(const PackagingBench::Result& result)
{
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    return result.exitCode == 0;
}

QStringList approved(const QString& name)
{
    return PackagingBench::linesOf(
        QStringLiteral(KESTREL_SOURCE "/tests/packaging/approved/") + name)
        .replaceInStrings(QStringLiteral("VERSION"), QStringLiteral(KESTREL_VERSION));
}

TEST(PackageScript, a_dry_run_prints_every_command_in_order)
{
    PackagingBench bench;
    EXPECT_EQ(bench.run(forOthers + QStringList { "--dry-run" }).output, approved("signed.txt"));
    EXPECT_EQ(bench.run(forThisMac + QStringList { "--dry-run" }).output, approved("ad-hoc.txt"));
}

TEST(PackageScript, a_dry_run_runs_nothing_and_leaves_nothing)
{
    PackagingBench bench;
    ASSERT_TRUE(succeeded(bench.run(forOthers + QStringList { "--dry-run" })));
    for (const QString& call : bench.calls()) {
        EXPECT_TRUE(call == QLatin1String("pkg-config --variable=libdir libplist-2.0")
            || call == QLatin1String("qtpaths --query QT_INSTALL_PLUGINS"))
            << call.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(bench.tree(QStringLiteral("build"))));
}

TEST(PackageScript, an_image_holds_the_program_and_a_way_to_the_applications)
{
    PackagingBench bench;
    ASSERT_TRUE(succeeded(bench.run(forThisMac)));
    EXPECT_TRUE(QFileInfo(bench.bundle(program)).isFile());
    EXPECT_EQ(
        QFileInfo(bench.tree(QStringLiteral("build/package/content/Applications"))).symLinkTarget(),
        QStringLiteral("/Applications"));
    EXPECT_THAT(bench.calls(QStringLiteral("hdiutil")),
        ElementsAre(
            QStringLiteral(
                "hdiutil create -volname ZENTA Kestrel -srcfolder build/package/content -fs "
                "HFS+ -format UDZO -ov build/package/ZENTA-Kestrel-" KESTREL_VERSION "-arm64.dmg"),
            QStringLiteral(
                "hdiutil verify build/package/ZENTA-Kestrel-" KESTREL_VERSION "-arm64.dmg")));
}

TEST(PackageScript, signs_from_the_inside_out_with_the_hardened_runtime)
{
    PackagingBench bench;
    ASSERT_TRUE(succeeded(bench.run(forOthers)));
    const QString as = QStringLiteral("codesign --force --timestamp --options runtime --sign "
                                      "Developer ID Application: Holvik (ABCDE12345) ");
    EXPECT_THAT(bench.calls(QStringLiteral("codesign")),
        ElementsAre(as + app + "/Contents/Frameworks/libplist-2.0.4.dylib",
            as + app + "/Contents/Frameworks/QtCore.framework",
            as + app + "/Contents/PlugIns/platforms/libqcocoa.dylib",
            as + app + "/Contents/PlugIns/platforms/libqoffscreen.dylib",
            as + app + "/Contents/PlugIns/styles/libqmacstyle.dylib",
            as + app + "/Contents/MacOS/kestrelctl",
            as + "--entitlements packaging/macos/kestrel.entitlements " + app,
            "codesign --verify --deep --strict --verbose=2 " + app,
            "codesign --force --timestamp --sign Developer ID Application: Holvik (ABCDE12345) "
            "build/package/ZENTA-Kestrel-" KESTREL_VERSION "-arm64.dmg"));
}

TEST(PackageScript, an_ad_hoc_signature_goes_without_the_hardened_runtime)
{
    PackagingBench bench;
    const auto result = bench.run(forThisMac);
    ASSERT_TRUE(succeeded(result));
    const QStringList calls = bench.calls(QStringLiteral("codesign --force"));
    EXPECT_EQ(calls.size(), 7);
    for (const QString& call : calls) {
        EXPECT_TRUE(call.startsWith(QStringLiteral("codesign --force --timestamp=none --sign - ")))
            << call.toStdString();
    }
    EXPECT_THAT(bench.calls(QStringLiteral("xcrun")), IsEmpty());
    EXPECT_TRUE(result.output.contains(QStringLiteral(
        "package-macos: no --identity: the signature is ad hoc, other Macs refuse the program")));
    EXPECT_TRUE(result.output.contains(
        QStringLiteral("package-macos: no --notary-profile: nothing is notarised")));
}

TEST(PackageScript, the_program_is_notarised_before_it_is_packed_and_the_image_after)
{
    PackagingBench bench;
    ASSERT_TRUE(succeeded(bench.run(forOthers)));
    const QString image
        = QStringLiteral("build/package/ZENTA-Kestrel-" KESTREL_VERSION "-arm64.dmg");
    EXPECT_THAT(bench.calls(QStringLiteral("xcrun")),
        ElementsAre("xcrun notarytool submit build/package/ZENTA Kestrel.zip --keychain-profile "
                    "kestrel --wait",
            "xcrun stapler staple " + app,
            "xcrun notarytool submit " + image + " --keychain-profile kestrel --wait",
            "xcrun stapler staple " + image));
    const QStringList all = bench.calls();
    EXPECT_LT(all.indexOf("xcrun stapler staple " + app),
        all.indexOf(bench.calls(QStringLiteral("hdiutil create")).value(0)));
}

TEST(PackageScript, there_is_no_image_of_a_program_that_was_not_notarised)
{
    for (const char* step : { "REFUSING=notarytool", "REFUSING=stapler" }) {
        PackagingBench bench;
        EXPECT_NE(bench.run(forOthers, { QLatin1String(step) }).exitCode, 0);
        EXPECT_THAT(bench.calls(QStringLiteral("hdiutil")), IsEmpty());
    }
}

TEST(PackageScript, an_image_that_fails_twice_is_made_at_the_third_attempt)
{
    PackagingBench bench;
    const QString noPause = QStringLiteral("KESTREL_IMAGE_PAUSE=0");
    ASSERT_TRUE(succeeded(bench.run(forThisMac, { "BUSY=2", noPause })));
    EXPECT_EQ(bench.calls(QStringLiteral("hdiutil create")).size(), 3);
    EXPECT_EQ(bench.calls(QStringLiteral("hdiutil verify")).size(), 1);
}

TEST(PackageScript, an_image_that_fails_three_times_is_given_up)
{
    PackagingBench bench;
    EXPECT_NE(bench.run(forThisMac, { "BUSY=3", "KESTREL_IMAGE_PAUSE=0" }).exitCode, 0);
    EXPECT_EQ(bench.calls(QStringLiteral("hdiutil create")).size(), 3);
    EXPECT_THAT(bench.calls(QStringLiteral("hdiutil verify")), IsEmpty());
}

TEST(PackageScript, the_bundle_finds_its_own_plug_ins)
{
    PackagingBench bench;
    ASSERT_TRUE(succeeded(bench.run(forThisMac)));
    EXPECT_THAT(PackagingBench::linesOf(bench.bundle(QStringLiteral("Resources/qt.conf"))),
        ElementsAre("[Paths]", "Plugins = PlugIns"));
    EXPECT_THAT(bench.calls(QStringLiteral("macdeployqt")),
        ElementsAre("macdeployqt " + app + " -executable=" + app
            + "/Contents/MacOS/kestrelctl -no-plugins -verbose=1"));
}

TEST(PackageScript, libraries_that_lie_outside_are_taken_in_with_those_that_they_need)
{
    PackagingBench bench;
    const QString outside = QStringLiteral("outside/opt/homebrew/opt/");
    bench.write(bench.tool(outside + "libplist/lib/libplist-2.0.4.dylib"),
        { "id /opt/homebrew/opt/libplist/lib/libplist-2.0.4.dylib",
            "needs /opt/homebrew/opt/deep/lib/libdeep.1.dylib", "minos 12.0", "arch arm64" });
    bench.write(bench.tool(outside + "deep/lib/libdeep.1.dylib"),
        { "id /opt/homebrew/opt/deep/lib/libdeep.1.dylib", "minos 12.0", "arch arm64" });
    ASSERT_TRUE(succeeded(bench.run(forThisMac)));
    EXPECT_THAT(PackagingBench::linesOf(bench.bundle(program)),
        ElementsAre("needs @executable_path/../Frameworks/libplist-2.0.4.dylib",
            "needs @rpath/QtCore.framework/Versions/A/QtCore", "needs /usr/lib/libSystem.B.dylib",
            "rpath @executable_path/../Frameworks", "minos 12.0", "arch arm64"));
    EXPECT_THAT(
        PackagingBench::linesOf(bench.bundle(QStringLiteral("Frameworks/libplist-2.0.4.dylib"))),
        ElementsAre("id @rpath/libplist-2.0.4.dylib",
            "needs @executable_path/../Frameworks/libdeep.1.dylib", "minos 12.0", "arch arm64"));
    EXPECT_THAT(PackagingBench::linesOf(bench.bundle(QStringLiteral("Frameworks/libdeep.1.dylib"))),
        ElementsAre("id @rpath/libdeep.1.dylib", "minos 12.0", "arch arm64"));
}

TEST(PackageScript, a_library_that_is_taken_in_brings_those_that_it_expects_beside_itself)
{
    PackagingBench bench;
    const QString folder = QStringLiteral("/opt/homebrew/opt/libplist/lib/");
    bench.write(bench.tool("outside" + folder + "libplist-2.0.4.dylib"),
        { "id " + folder + "libplist-2.0.4.dylib", "needs @loader_path/libsister.1.dylib",
            "minos 12.0", "arch arm64" });
    bench.write(bench.tool("outside" + folder + "libsister.1.dylib"),
        { "id " + folder + "libsister.1.dylib", "minos 12.0", "arch arm64" });
    ASSERT_TRUE(succeeded(bench.run(forThisMac)));
    EXPECT_THAT(
        PackagingBench::linesOf(bench.bundle(QStringLiteral("Frameworks/libplist-2.0.4.dylib"))),
        ElementsAre("id @rpath/libplist-2.0.4.dylib",
            "needs @executable_path/../Frameworks/libsister.1.dylib", "minos 12.0", "arch arm64"));
    EXPECT_THAT(
        PackagingBench::linesOf(bench.bundle(QStringLiteral("Frameworks/libsister.1.dylib"))),
        ElementsAre("id @rpath/libsister.1.dylib", "minos 12.0", "arch arm64"));
}

TEST(PackageScript, the_program_looks_for_its_libraries_in_the_bundle_and_nowhere_else)
{
    PackagingBench bench;
    bench.write(bench.tool(QStringLiteral("built/Contents/") + program),
        { "needs /usr/lib/libSystem.B.dylib", "rpath /opt/homebrew/lib", "minos 12.0",
            "arch arm64" });
    ASSERT_TRUE(succeeded(bench.run(forThisMac)));
    EXPECT_THAT(PackagingBench::linesOf(bench.bundle(program)),
        ElementsAre("needs /usr/lib/libSystem.B.dylib", "minos 12.0", "arch arm64",
            "rpath @executable_path/../Frameworks"));
}

TEST(PackageScript, kestrelctl_lies_beside_the_program_and_loads_the_same_libraries)
{
    PackagingBench bench;
    ASSERT_TRUE(succeeded(bench.run(forThisMac)));
    EXPECT_THAT(bench.calls(QStringLiteral("cmake --build")),
        ElementsAre("cmake --build --preset macos-arm64 --target kestrel kestrelctl"));
    EXPECT_THAT(PackagingBench::linesOf(bench.bundle(companion)),
        ElementsAre("needs @executable_path/../Frameworks/libplist-2.0.4.dylib",
            "needs @rpath/QtCore.framework/Versions/A/QtCore", "needs /usr/lib/libSystem.B.dylib",
            "minos 12.0", "arch arm64", "rpath @executable_path/../Frameworks"));
}

TEST(PackageScript, kestrelctl_is_refused_for_the_same_reasons_as_the_program)
{
    const auto refusal = [](const QStringList& lines) {
        PackagingBench bench;
        bench.write(bench.tool(QStringLiteral("kestrelctl")), lines);
        const auto result = bench.run(forThisMac);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(bench.calls(QStringLiteral("codesign")), IsEmpty());
        return result.errors;
    };
    const QString said = "package-macos: " + app + "/Contents/" + companion;
    const QString system = QStringLiteral("needs /usr/lib/libSystem.B.dylib");
    EXPECT_EQ(refusal({ system, "minos 14.0", "arch arm64" }),
        said + " needs macOS 14.0 on arm64, and the image is for 12.0");
    EXPECT_EQ(refusal({ system, "minos 12.0", "arch x86_64" }), said + " is not built for arm64");
    EXPECT_EQ(
        refusal({ "needs @rpath/QtSvg.framework/Versions/A/QtSvg", "minos 12.0", "arch arm64" }),
        said + " needs @rpath/QtSvg.framework/Versions/A/QtSvg, which the bundle does not hold");
}

// What the script says when one binary of the deployment is like this. Nothing gets signed.
QString refusalOf(const QString& path, const QStringList& lines)
{
    PackagingBench bench;
    bench.write(bench.tool(QStringLiteral("deployed/Contents/") + path), lines);
    const auto result = bench.run(forThisMac);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(bench.calls(QStringLiteral("codesign")), IsEmpty());
    return result.errors;
}

TEST(PackageScript, a_bundle_that_depends_on_something_outside_is_refused)
{
    const QString plugin = QStringLiteral("PlugIns/platforms/libqcocoa.dylib");
    const QString said = "package-macos: " + app + "/Contents/" + plugin;
    EXPECT_EQ(refusalOf(plugin, { "needs libbare.dylib", "minos 12.0", "arch arm64" }),
        said + " needs libbare.dylib, which is outside of the bundle");
    EXPECT_EQ(refusalOf(plugin, { "needs @rpath/libmissing.dylib", "minos 12.0", "arch arm64" }),
        said + " needs @rpath/libmissing.dylib, which the bundle does not hold");
    EXPECT_EQ(
        refusalOf(plugin, { "needs @loader_path/../libmissing.dylib", "minos 12.0", "arch arm64" }),
        said + " needs @loader_path/../libmissing.dylib, which the bundle does not hold");
    EXPECT_EQ(refusalOf(plugin,
                  { "needs /opt/homebrew/lib/QtGui.framework/Versions/A/QtGui", "minos 12.0",
                      "arch arm64" }),
        "package-macos: macdeployqt has left /opt/homebrew/lib/QtGui.framework/Versions/A/QtGui "
        "outside");
    EXPECT_EQ(refusalOf(QStringLiteral("Frameworks/libown.dylib"),
                  { "id /usr/local/lib/libown.dylib", "minos 12.0", "arch arm64" }),
        "package-macos: " + app
            + "/Contents/Frameworks/libown.dylib needs /usr/local/lib/libown.dylib, which is "
              "outside of the bundle");
}

TEST(PackageScript, a_binary_that_names_no_library_has_not_been_read_and_is_refused)
{
    const QString plugin = QStringLiteral("PlugIns/platforms/libqcocoa.dylib");
    EXPECT_EQ(refusalOf(plugin, { "minos 12.0", "arch arm64" }),
        "package-macos: otool names no library of " + app + "/Contents/" + plugin);
}

TEST(PackageScript, a_library_without_a_known_licence_is_refused)
{
    EXPECT_EQ(refusalOf(QStringLiteral("Frameworks/libunknown.2.dylib"),
                  { "id @rpath/libunknown.2.dylib", "minos 12.0", "arch arm64" }),
        "package-macos: libunknown.2.dylib is not listed with its licence in THIRD-PARTY.md");
}

TEST(PackageScript, a_binary_for_another_processor_is_refused)
{
    const QString plugin = QStringLiteral("PlugIns/platforms/libqcocoa.dylib");
    EXPECT_EQ(refusalOf(plugin, { "needs /usr/lib/libSystem.B.dylib", "arch x86_64" }),
        "package-macos: " + app + "/Contents/" + plugin + " is not built for arm64");
    PackagingBench bench;
    const auto result = bench.run({ "--arch", "universal" });
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.errors.endsWith(QStringLiteral(" is not built for x86_64")))
        << result.errors.toStdString();
}

TEST(PackageScript, a_binary_that_needs_a_newer_system_is_refused)
{
    const QString plugin = QStringLiteral("PlugIns/platforms/libqcocoa.dylib");
    const QString said = "package-macos: " + app + "/Contents/" + plugin;
    EXPECT_EQ(refusalOf(plugin, { "needs /usr/lib/libSystem.B.dylib", "minos 13.0", "arch arm64" }),
        said + " needs macOS 13.0 on arm64, and the image is for 12.0");
    EXPECT_EQ(refusalOf(plugin, { "needs /usr/lib/libSystem.B.dylib", "minos 12.1", "arch arm64" }),
        said + " needs macOS 12.1 on arm64, and the image is for 12.0");
    EXPECT_EQ(refusalOf(plugin, { "needs /usr/lib/libSystem.B.dylib", "arch arm64" }),
        said + " does not tell which system it needs on arm64");
}

TEST(PackageScript, a_binary_for_an_older_system_is_taken)
{
    PackagingBench bench;
    bench.write(bench.tool(QStringLiteral("deployed/Contents/PlugIns/platforms/libqcocoa.dylib")),
        { "needs /usr/lib/libSystem.B.dylib", "minos 9.9", "arch arm64" });
    EXPECT_TRUE(succeeded(bench.run(forThisMac)));
}

TEST(PackageScript, the_image_is_for_both_processors_unless_one_is_named)
{
    PackagingBench bench;
    const auto output = bench.run({ "--dry-run" }).output;
    EXPECT_TRUE(output.contains(QStringLiteral("cmake --preset macos-universal")));
    EXPECT_TRUE(output.last().endsWith(QStringLiteral("-universal.dmg")));
}

TEST(PackageScript, says_what_is_wrong_with_its_arguments)
{
    PackagingBench bench;
    const auto said = [&bench](const QStringList& arguments) {
        const auto result = bench.run(arguments);
        EXPECT_EQ(result.exitCode, 1);
        return result.errors;
    };
    EXPECT_EQ(said({ "--arch", "ppc" }),
        "package-macos: no architecture of a Mac: ppc (arm64, x86_64 or universal)");
    EXPECT_EQ(said({ "--arch" }), "package-macos: --arch needs a value");
    EXPECT_EQ(said({ "--sign" }), "package-macos: unknown argument: --sign");
    EXPECT_EQ(said({ "--arch", "arm64", "--notary-profile", "kestrel" }),
        "package-macos: only what is signed with an --identity can be notarised");
    EXPECT_THAT(bench.calls(), IsEmpty());
}

TEST(PackageScript, says_which_tool_is_missing_before_it_begins)
{
    PackagingBench bench;
    ASSERT_TRUE(QFile::remove(bench.tool(QStringLiteral("bin/macdeployqt"))));
    const auto result = bench.run(forThisMac);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(
        result.errors, "package-macos: macdeployqt is missing: docs/macos.md says what is needed");
    EXPECT_THAT(bench.calls(), IsEmpty());
}

} // namespace
} // namespace kestrel::test
