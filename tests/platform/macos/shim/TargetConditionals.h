#pragma once

// The build says which of the two processors of a Mac a test program stands for.
#if !defined(TARGET_CPU_ARM64) || !defined(TARGET_CPU_X86_64)
#error "TARGET_CPU_ARM64 and TARGET_CPU_X86_64 must be 0 or 1"
#endif
