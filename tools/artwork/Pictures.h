#pragma once

#include <QImage>
#include <QString>

#include <functional>
#include <vector>

namespace kestrel::artwork {

// One file of the committed artwork: its path below resources/ and how to draw it.
struct Picture {
    QString path;
    std::function<QImage()> draw;
};

// All pictures of the product.
[[nodiscard]] std::vector<Picture> allPictures();

} // namespace kestrel::artwork
