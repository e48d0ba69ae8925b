#include "tools/artwork/Pictures.h"

#include <QDir>
#include <QFileInfo>
#include <QImageWriter>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

namespace {

// Writes the pixels without metadata, at the highest compression, so that the same picture gives
// the same bytes.
bool write(const kestrel::artwork::Picture& picture, const QDir& directory)
{
    const QString path = directory.filePath(picture.path);
    if (!QDir().mkpath(QFileInfo(path).path()))
        return false;
    QImageWriter writer(path, "png");
    writer.setQuality(0);
    return writer.write(picture.draw());
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Draws all pictures of the product into OUTPUT_DIR/images and OUTPUT_DIR/icons.");
    std::string output;
    app.add_option("OUTPUT_DIR", output, "\"resources\" to renew the committed ones")->required();
    CLI11_PARSE(app, argc, argv);

    const QDir directory(QString::fromStdString(output));
    for (const auto& picture : kestrel::artwork::allPictures()) {
        if (!write(picture, directory)) {
            std::fprintf(stderr, "kestrel-artwork: cannot write %s\n",
                qPrintable(directory.filePath(picture.path)));
            return 1;
        }
    }
    return 0;
}
