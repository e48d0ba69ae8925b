#include "platform/KnownKeys.h"

#include "platform/linux/x11/EvdevKeyMap.h"

bool kestrel::hasKeyOnKeyboards(KeyCode key)
{
    return EvdevKeyMap::evdevCode(key).has_value();
}
