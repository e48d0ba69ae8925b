#include "tools/artwork/IconSet.h"

#include <QFile>
#include <QSaveFile>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    CLI::App app("Gathers the pictures PREFIX-16.png to PREFIX-1024.png in an icon set for macOS.");
    std::string prefix;
    std::string output;
    app.add_option("PREFIX", prefix, "path and first part of the pictures' names")->required();
    app.add_option("OUTPUT", output, "the icon set to write, name.icns")->required();
    CLI11_PARSE(app, argc, argv);

    const auto set = kestrel::artwork::iconSet([&prefix](int edge) {
        QFile file(QStringLiteral("%1-%2.png").arg(QString::fromStdString(prefix)).arg(edge));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    });
    if (!set) {
        std::fprintf(stderr, "kestrel-iconset: %s-…png are not all there in the sizes they name\n",
            prefix.c_str());
        return 1;
    }
    QSaveFile file(QString::fromStdString(output));
    if (!file.open(QIODevice::WriteOnly) || file.write(*set) != set->size() || !file.commit()) {
        std::fprintf(stderr, "kestrel-iconset: cannot write %s\n", output.c_str());
        return 1;
    }
    return 0;
}
