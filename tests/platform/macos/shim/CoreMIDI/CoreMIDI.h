#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreMIDI/Definitions.h>
#include <CoreMIDI/Inline.h>
#include <CoreMIDI/Names.h>
#include <TargetConditionals.h>
