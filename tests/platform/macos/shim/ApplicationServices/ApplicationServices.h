#pragma once

#include <ApplicationServices/Names.h>
#include <CoreGraphics/CoreGraphics.h>
