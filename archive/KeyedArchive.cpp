#include "archive/KeyedArchive.h"

#include "archive/ArchiveDecoder.h"
#include "archive/ArchiveEncoder.h"
#include "archive/ArchiveGraph.h"

namespace kestrel {

Bytes KeyedArchive::archivedData(const ArchiveValue& root)
{
    checkArchiveGraph(root);
    return ArchiveEncoder().encode(root).toBinary();
}

ArchiveValue KeyedArchive::unarchivedRoot(ByteView archive)
{
    const PropertyList list = PropertyList::fromBytes(archive);
    ArchiveValue root = ArchiveDecoder(list).root();
    checkArchiveGraph(root);
    return root;
}

} // namespace kestrel
