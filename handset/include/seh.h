// Structured exception handling, for a compiler that has no __try.
//
// DEFINE_GUARDED_CALL(name) at file scope defines
//     extern "C" BOOL name(void (*function)(void*), void* argument);
// which is what the device's compiler makes of
//     __try { function(argument); return TRUE; } __except (EXCEPTION_EXECUTE_HANDLER) { return FALSE; }
// Every structured exception that no frame below handles ends the call: an access violation as well as a
// RaiseException. The frames between are left without their destructors. 32-bit builds are compiled but not
// linked.
#pragma once

#include <windows.h>

#if defined(_WIN64)
// The scope table has one row: from the call to the instruction behind it, handled always (the 1), going on
// at the last label.
// clang-format off
#define DEFINE_GUARDED_CALL(name) \
    __asm__( \
        "    .text\n" \
        "    .globl " #name "\n" \
        "    .def " #name "; .scl 2; .type 32; .endef\n" \
        "    .seh_proc " #name "\n" \
        #name ":\n" \
        "    subq $40, %rsp\n" \
        "    .seh_stackalloc 40\n" \
        "    .seh_endprologue\n" \
        ".L" #name "_begin:\n" \
        "    movq %rcx, %rax\n" \
        "    movq %rdx, %rcx\n" \
        "    call *%rax\n" \
        "    nop\n" \
        ".L" #name "_end:\n" \
        "    movl $1, %eax\n" \
        "    addq $40, %rsp\n" \
        "    ret\n" \
        ".L" #name "_raised:\n" \
        "    xorl %eax, %eax\n" \
        "    addq $40, %rsp\n" \
        "    ret\n" \
        "    .seh_handler __C_specific_handler, @except\n" \
        "    .seh_handlerdata\n" \
        "    .long 1\n" \
        "    .rva .L" #name "_begin, .L" #name "_end\n" \
        "    .long 1\n" \
        "    .rva .L" #name "_raised\n" \
        "    .text\n" \
        "    .seh_endproc\n")
// clang-format on
#else
#define DEFINE_GUARDED_CALL(name) static_assert(true, "nothing is linked")
#endif
