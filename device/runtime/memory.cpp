// The processor's run-time interface for memory (ARM IHI 0043, "Run-time ABI for the ARM
// Architecture", 4.3.4), over the C library of the system.
#include <string.h>

extern "C" {

void __aeabi_memcpy(void* to, const void* from, size_t size) {
    memcpy(to, from, size);
}
void __aeabi_memcpy4(void* to, const void* from, size_t size) {
    memcpy(to, from, size);
}
void __aeabi_memcpy8(void* to, const void* from, size_t size) {
    memcpy(to, from, size);
}
void __aeabi_memmove(void* to, const void* from, size_t size) {
    memmove(to, from, size);
}
void __aeabi_memmove4(void* to, const void* from, size_t size) {
    memmove(to, from, size);
}
void __aeabi_memmove8(void* to, const void* from, size_t size) {
    memmove(to, from, size);
}
// The value comes last here.
void __aeabi_memset(void* to, size_t size, int value) {
    memset(to, value, size);
}
void __aeabi_memset4(void* to, size_t size, int value) {
    memset(to, value, size);
}
void __aeabi_memset8(void* to, size_t size, int value) {
    memset(to, value, size);
}
void __aeabi_memclr(void* to, size_t size) {
    memset(to, 0, size);
}
void __aeabi_memclr4(void* to, size_t size) {
    memset(to, 0, size);
}
void __aeabi_memclr8(void* to, size_t size) {
    memset(to, 0, size);
}

}  // extern "C"
