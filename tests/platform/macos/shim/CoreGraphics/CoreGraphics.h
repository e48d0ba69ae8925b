#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/Definitions.h>
#include <CoreGraphics/Names.h>
