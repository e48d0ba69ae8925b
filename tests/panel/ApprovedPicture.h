#pragma once

#include <QImage>
#include <QString>

namespace kestrel {

// Fails the running test unless `actual` is the approved picture `name` of that scale; what differs
// is written beside the working directory. Set KESTREL_APPROVE=1 to write the approved pictures
// anew; what changed is then for git to show.
void compareWithApproved(const QString& name, int scale, const QImage& actual);

} // namespace kestrel
