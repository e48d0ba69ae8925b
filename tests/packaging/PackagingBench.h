#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace kestrel::test {

// A copy of what scripts/package-macos reads of the tree, and a folder of tools that stand for
// those of macOS: the build makes two programs that need libplist and QtCore, there are three
// plug-ins of Qt, and the deployment brings QtCore.
class PackagingBench {
public:
    struct Result {
        int exitCode = -1;
        QStringList output;
        QString errors;
    };

    PackagingBench();

    // Runs the script with the stand-ins in front of the system's own tools.
    Result run(const QStringList& arguments, const QStringList& environment = {});

    // Below the folder of the tree, of the tools; in the finished bundle.
    [[nodiscard]] QString tree(const QString& path) const;
    [[nodiscard]] QString tool(const QString& path) const;
    [[nodiscard]] QString bundle(const QString& path) const;

    void write(const QString& path, const QStringList& lines);
    [[nodiscard]] static QStringList linesOf(const QString& path);
    // The calls of the tools so far that begin like this.
    [[nodiscard]] QStringList calls(const QString& beginning = {}) const;

private:
    QTemporaryDir m_folder;
};

} // namespace kestrel::test
