#pragma once

#include <sys/Definitions.h>
#include <sys/Names.h>
