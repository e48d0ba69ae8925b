#pragma once

struct os_unfair_lock_s {
    unsigned int _os_unfair_lock_opaque;
};
