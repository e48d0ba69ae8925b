#pragma once

#include <QImage>
#include <QString>

namespace kestrel::test {

// The largest difference of any channel of any pixel, from 0 to 255. Colours are premultiplied, so
// transparent pixels are equal. The pictures have the same size.
[[nodiscard]] int largestDifference(const QImage& left, const QImage& right);

// Whether a picture shows text in a font of the system, which differs between systems.
enum class Fonts { None, OfTheSystem };

// A folder of approved pictures. Those with fonts of the system are in it for Linux, and for
// another system in a folder with the name of its kernel, such as "darwin".
class ApprovedFolder {
public:
    enum class Verdict { Same, Different, NoneForThisSystem };

    ApprovedFolder(const QString& folder, const QString& kernel);

    // Where the picture of a name is, which is its path in the folder without ".png".
    [[nodiscard]] QString path(const QString& name, Fonts) const;
    // `tolerance` is the largest difference allowed in a channel. A system has approved pictures
    // with fonts once it has one, and from then on a missing one is different.
    [[nodiscard]] Verdict compare(
        const QString& name, const QImage& actual, int tolerance, Fonts) const;

private:
    QString m_folder;
    QString m_folderOfSystem;
};

// Fails the running test unless `actual` is the approved picture of this name below tests/approved,
// or skips it on a system without approved pictures. A picture that is not the approved one is
// written to the working directory. With KESTREL_APPROVE=1 in the environment the approved picture
// is written anew instead.
void compareWithApproved(const QString& name, const QImage& actual, int tolerance, Fonts);

} // namespace kestrel::test
