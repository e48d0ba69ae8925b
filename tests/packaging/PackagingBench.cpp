#include "tests/packaging/PackagingBench.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTextStream>

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
const QDir source(QStringLiteral(KESTREL_SOURCE));

constexpr int TimeoutMs = 60000;
constexpr const char* Tools[]
    = { "cmake", "codesign", "cp", "ditto", "hdiutil", "install_name_tool", "lipo", "macdeployqt",
          "ninja", "otool", "pkg-config", "qtpaths", "spctl", "xcrun" };
} // namespace

PackagingBench::PackagingBench()
{
    for (const char* path : { "CMakeLists.txt", "scripts/package-macos",
             "packaging/macos/kestrel.entitlements", "packaging/macos/qt.conf" }) {
        const QString copy = tree(QLatin1String(path));
        QDir().mkpath(QFileInfo(copy).path());
        EXPECT_TRUE(QFile::copy(source.filePath(QLatin1String(path)), copy)) << path;
    }
    write(tree(QStringLiteral("THIRD-PARTY.md")),
        linesOf(source.filePath(QStringLiteral("THIRD-PARTY.md")))
            + QStringList { "| made up for tests | `libdeep`, `libsister`, `libown` |" });
    QDir().mkpath(tool(QStringLiteral("bin")));
    for (const char* name : Tools) {
        EXPECT_TRUE(QFile::link(source.filePath(QStringLiteral("tests/packaging/toolbox")),
            tool(QStringLiteral("bin/") + QLatin1String(name))));
    }
    const QStringList built { "needs /opt/homebrew/opt/libplist/lib/libplist-2.0.4.dylib",
        "needs @rpath/QtCore.framework/Versions/A/QtCore", "needs /usr/lib/libSystem.B.dylib" };
    const QStringList ofMac { "rpath /opt/homebrew/lib", "minos 12.0", "arch arm64" };
    write(tool(QStringLiteral("built/Contents/MacOS/ZENTA Kestrel")),
        built + QStringList { "rpath @executable_path/../Frameworks" } + ofMac);
    write(tool(QStringLiteral("kestrelctl")), built + ofMac);
    write(tool(QStringLiteral("built/Contents/Info.plist")), {});
    write(tool(QStringLiteral("built/Contents/Resources/kestrel.icns")), {});
    write(tool(QStringLiteral("deployed/Contents/Frameworks/QtCore.framework/Versions/A/QtCore")),
        { "id @rpath/QtCore.framework/Versions/A/QtCore",
            "needs /System/Library/Frameworks/AppKit.framework/AppKit", "minos 12.0",
            "arch arm64" });
    for (const char* plugin : { "platforms/libqcocoa.dylib", "platforms/libqoffscreen.dylib",
             "styles/libqmacstyle.dylib" }) {
        write(
            tool(QStringLiteral("outside/opt/homebrew/share/qt/plugins/") + QLatin1String(plugin)),
            { "needs @rpath/QtCore.framework/Versions/A/QtCore", "minos 12.0", "arch arm64" });
    }
    write(tool(QStringLiteral("outside/opt/homebrew/opt/libplist/lib/libplist-2.0.4.dylib")),
        { "id /opt/homebrew/opt/libplist/lib/libplist-2.0.4.dylib",
            "needs /usr/lib/libSystem.B.dylib", "minos 12.0", "arch arm64" });
}

PackagingBench::Result PackagingBench::run(
    const QStringList& arguments, const QStringList& environment)
{
    QProcess process;
    process.setProgram(QStringLiteral("/bin/bash"));
    process.setArguments(QStringList { tree(QStringLiteral("scripts/package-macos")) } + arguments);
    process.setEnvironment(QStringList { QStringLiteral("TOOLS=") + tool({}),
                               QStringLiteral("PATH=") + tool(QStringLiteral("bin"))
                                   + QStringLiteral(":/usr/bin:/bin") }
        + environment);
    process.start();
    EXPECT_TRUE(process.waitForFinished(TimeoutMs));
    return { .exitCode = process.exitCode(),
        .output = QString::fromUtf8(process.readAllStandardOutput())
                      .split(QLatin1Char('\n'), Qt::SkipEmptyParts),
        .errors = QString::fromUtf8(process.readAllStandardError()).trimmed() };
}

QString PackagingBench::tree(const QString& path) const
{
    return m_folder.filePath(QStringLiteral("tree/") + path);
}

QString PackagingBench::tool(const QString& path) const
{
    return m_folder.filePath(QStringLiteral("tools/") + path);
}

QString PackagingBench::bundle(const QString& path) const
{
    return tree(QStringLiteral("build/package/content/ZENTA Kestrel.app/Contents/") + path);
}

void PackagingBench::write(const QString& path, const QStringList& lines)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    for (const QString& line : lines)
        QTextStream(&file) << line << '\n';
}

QStringList PackagingBench::linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList PackagingBench::calls(const QString& beginning) const
{
    QStringList calls;
    for (const QString& line : linesOf(tool(QStringLiteral("log")))) {
        if (line.startsWith(beginning))
            calls << line;
    }
    return calls;
}

} // namespace kestrel::test
