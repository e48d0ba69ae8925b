#pragma once

#include <Carbon/Definitions.h>
#include <Carbon/Names.h>
#include <CoreServices/CoreServices.h>
