// Compiled against the SDK, by scripts/check-macos with optimisation: every declaration of the shim
// must agree with the SDK's. C++ lets types, functions and variables be declared twice only if they
// are the same; structures and constants are compared one by one.
#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreMIDI/CoreMIDI.h>
#include <CoreServices/CoreServices.h>
#include <os/lock.h>
#include <sys/sysctl.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace shim {
#include "tests/platform/macos/shim/Carbon/Definitions.h"
#include "tests/platform/macos/shim/CoreFoundation/Definitions.h"
#include "tests/platform/macos/shim/CoreGraphics/Definitions.h"
#include "tests/platform/macos/shim/CoreMIDI/Definitions.h"
#include "tests/platform/macos/shim/os/Definitions.h"
#include "tests/platform/macos/shim/sys/Definitions.h"
} // namespace shim

// Walks the SDK's packets.
namespace inlined {
#include "tests/platform/macos/shim/CoreMIDI/Inline.h"
} // namespace inlined

#include "tests/platform/macos/shim/ApplicationServices/Names.h"
#include "tests/platform/macos/shim/Carbon/Names.h"
#include "tests/platform/macos/shim/CoreFoundation/Names.h"
#include "tests/platform/macos/shim/CoreGraphics/Names.h"
#include "tests/platform/macos/shim/CoreMIDI/Names.h"
#include "tests/platform/macos/shim/CoreServices/Names.h"
#include "tests/platform/macos/shim/os/Names.h"
#include "tests/platform/macos/shim/sys/Names.h"

#define SAME_CONSTANT(name)                                                                        \
    static_assert(static_cast<long long>(shim::name) == static_cast<long long>(::name))
#define SAME_SIZE(type)                                                                            \
    static_assert(sizeof(shim::type) == sizeof(::type) && alignof(shim::type) <= alignof(::type))
#define SAME_MEMBER(type, member)                                                                  \
    static_assert(offsetof(shim::type, member) == offsetof(::type, member)                         \
        && sizeof(shim::type::member) == sizeof(::type::member)                                    \
        && std::is_signed_v<                                                                       \
               decltype(shim::type::member)> == std::is_signed_v<decltype(::type::member)>)

SAME_SIZE(CFRange);
SAME_MEMBER(CFRange, location);
SAME_MEMBER(CFRange, length);
SAME_SIZE(CFDictionaryKeyCallBacks);
SAME_MEMBER(CFDictionaryKeyCallBacks, version);
SAME_MEMBER(CFDictionaryKeyCallBacks, retain);
SAME_MEMBER(CFDictionaryKeyCallBacks, release);
SAME_MEMBER(CFDictionaryKeyCallBacks, copyDescription);
SAME_MEMBER(CFDictionaryKeyCallBacks, equal);
SAME_MEMBER(CFDictionaryKeyCallBacks, hash);
SAME_SIZE(CFDictionaryValueCallBacks);
SAME_MEMBER(CFDictionaryValueCallBacks, version);
SAME_MEMBER(CFDictionaryValueCallBacks, retain);
SAME_MEMBER(CFDictionaryValueCallBacks, release);
SAME_MEMBER(CFDictionaryValueCallBacks, copyDescription);
SAME_MEMBER(CFDictionaryValueCallBacks, equal);
SAME_CONSTANT(noErr);
SAME_CONSTANT(kCFStringEncodingUTF8);

SAME_CONSTANT(shiftKey);
SAME_CONSTANT(kUCKeyActionDown);
SAME_CONSTANT(kUCKeyTranslateNoDeadKeysMask);

SAME_SIZE(MIDIPacket);
SAME_MEMBER(MIDIPacket, timeStamp);
SAME_MEMBER(MIDIPacket, length);
SAME_MEMBER(MIDIPacket, data);
SAME_SIZE(MIDIPacketList);
SAME_MEMBER(MIDIPacketList, numPackets);
SAME_MEMBER(MIDIPacketList, packet);
SAME_SIZE(MIDINotification);
SAME_MEMBER(MIDINotification, messageID);
SAME_MEMBER(MIDINotification, messageSize);
SAME_SIZE(MIDIObjectAddRemoveNotification);
SAME_MEMBER(MIDIObjectAddRemoveNotification, messageID);
SAME_MEMBER(MIDIObjectAddRemoveNotification, messageSize);
SAME_MEMBER(MIDIObjectAddRemoveNotification, parent);
SAME_MEMBER(MIDIObjectAddRemoveNotification, parentType);
SAME_MEMBER(MIDIObjectAddRemoveNotification, child);
SAME_MEMBER(MIDIObjectAddRemoveNotification, childType);
SAME_CONSTANT(kMIDIMsgSetupChanged);
SAME_CONSTANT(kMIDIMsgObjectAdded);
SAME_CONSTANT(kMIDIMsgObjectRemoved);
SAME_CONSTANT(kMIDIMsgPropertyChanged);
SAME_CONSTANT(kMIDIObjectType_Other);
SAME_CONSTANT(kMIDIObjectType_Device);
SAME_CONSTANT(kMIDIObjectType_Entity);
SAME_CONSTANT(kMIDIObjectType_Source);
SAME_CONSTANT(kMIDIObjectType_Destination);
SAME_CONSTANT(kMIDIInvalidClient);
SAME_CONSTANT(kMIDIInvalidPort);
SAME_CONSTANT(kMIDIUnknownEndpoint);
SAME_CONSTANT(kMIDIUnknownProperty);
SAME_CONSTANT(kMIDIServerStartErr);
SAME_CONSTANT(kMIDIObjectNotFound);
SAME_CONSTANT(kMIDIUnknownError);

SAME_CONSTANT(kCGHIDEventTap);
SAME_CONSTANT(kCGSessionEventTap);
SAME_CONSTANT(kCGAnnotatedSessionEventTap);
SAME_CONSTANT(kCGEventKeyDown);
SAME_CONSTANT(kCGEventKeyUp);
SAME_CONSTANT(kCGKeyboardEventAutorepeat);
SAME_CONSTANT(kCGKeyboardEventKeycode);
SAME_CONSTANT(kCGEventSourceStateID);
SAME_CONSTANT(kCGEventSourceStatePrivate);
SAME_CONSTANT(kCGEventSourceStateCombinedSessionState);
SAME_CONSTANT(kCGEventSourceStateHIDSystemState);
SAME_CONSTANT(kCGEventFlagMaskAlphaShift);
SAME_CONSTANT(kCGEventFlagMaskShift);
SAME_CONSTANT(kCGEventFlagMaskControl);
SAME_CONSTANT(kCGEventFlagMaskAlternate);
SAME_CONSTANT(kCGEventFlagMaskCommand);

SAME_SIZE(os_unfair_lock_s);
SAME_MEMBER(os_unfair_lock_s, _os_unfair_lock_opaque);

// Macros (CTL_KERN, KERN_PROC, KERN_PROC_ALL) may be defined twice only with the same text. The
// process records are aligned for members that the shim leaves out.
static_assert(sizeof(shim::kinfo_proc) == sizeof(::kinfo_proc));
SAME_MEMBER(kinfo_proc, kp_proc);
static_assert(sizeof(shim::extern_proc) == sizeof(::extern_proc));
SAME_MEMBER(extern_proc, p_comm);

// The compiler can remove this call only if both functions compute the same address.
__attribute__((error("MIDIPacketNext of the shim differs"))) void differs();

void compareMIDIPacketNext(const MIDIPacket* packet)
{
    if (MIDIPacketNext(packet) != inlined::MIDIPacketNext(packet))
        differs();
}
