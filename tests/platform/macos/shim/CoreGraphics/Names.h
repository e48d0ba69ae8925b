#pragma once

// Names of types and functions of Quartz event services.

#include <cstdint>

extern "C" {

typedef struct __CGEvent* CGEventRef;
typedef struct __CGEventSource* CGEventSourceRef;
typedef std::uint16_t CGKeyCode;
typedef std::uint64_t CGEventFlags;

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID state);
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode keyCode, bool down);
CGEventType CGEventGetType(CGEventRef event);
CGEventFlags CGEventGetFlags(CGEventRef event);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field);
void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, std::int64_t value);
void CGEventPost(CGEventTapLocation tap, CGEventRef event);
bool CGPreflightPostEventAccess(void);

} // extern "C"
