#pragma once

// What Kestrel reads of the records of the process table, at its place in bytes.

#define CTL_KERN 1
#define KERN_PROC 14
#define KERN_PROC_ALL 0

struct extern_proc {
    char before[243];
    char p_comm[17];
    char after[36];
};

struct kinfo_proc {
    struct extern_proc kp_proc;
    char after[352];
};
