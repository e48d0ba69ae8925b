#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/Names.h>
