#pragma once

#include <os/Definitions.h>
#include <os/Names.h>

#define OS_UNFAIR_LOCK_INIT                                                                        \
    os_unfair_lock { }
