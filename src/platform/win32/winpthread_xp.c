/* The threading library that comes with the compiler imports GetTickCount64, which Windows XP does not have: one of our
   own stands in its import slot. The symbol is the one that the linker would take from kernel32. */
#include <windows.h>

static ULONGLONG WINAPI tickCount64(void) { return GetTickCount(); }

ULONGLONG(WINAPI *imp_tick_count_64)(void) __asm__("__imp__GetTickCount64@0") = tickCount64;
