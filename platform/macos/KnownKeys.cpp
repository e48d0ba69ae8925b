#include "platform/KnownKeys.h"

// Virtual key codes have seven bits.
bool kestrel::hasKeyOnKeyboards(KeyCode key)
{
    return key < 128;
}
