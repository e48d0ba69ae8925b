#pragma once

extern "C" {

typedef struct os_unfair_lock_s os_unfair_lock;
typedef struct os_unfair_lock_s* os_unfair_lock_t;

void os_unfair_lock_lock(os_unfair_lock_t lock);
void os_unfair_lock_unlock(os_unfair_lock_t lock);

} // extern "C"
