/* What -fstack-protector needs at run time. The compiler's own library asks a cryptographic provider for its random word,
   which loads three DLLs at every start of a program; this asks the system's generator itself. A program ends at once
   when its stack was overwritten. */
#include <windows.h>

/* RtlGenRandom (ntsecapi.h): false when the system has no random bytes to give. */
BOOLEAN WINAPI SystemFunction036(PVOID buffer, ULONG length);

/* The word that stands between a function's buffers and its return address. One byte is 0, so that no text runs over
   it; this value holds where the system gives none. */
UINT_PTR __stack_chk_guard = 0xFF0A0D00u;

__attribute__((constructor(101), no_stack_protector)) static void chooseGuard(void) {
  UINT_PTR word;
  if (SystemFunction036(&word, sizeof word)) __stack_chk_guard = word & ~(UINT_PTR)0xFF;
}

__attribute__((noreturn)) void __stack_chk_fail(void) {
  OutputDebugStringA("*** stack smashing detected ***");
  TerminateProcess(GetCurrentProcess(), 0xC0000409u); /* STATUS_STACK_BUFFER_OVERRUN, ntstatus.h */
  __builtin_trap();
}
