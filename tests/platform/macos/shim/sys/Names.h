#pragma once

extern "C" {

int sysctl(int* name, unsigned int elements, void* value, unsigned long* size, void* newValue,
    unsigned long newSize);

} // extern "C"
