// Structured exception handling, for a compiler that has no __try.
//
// DEFINE_GUARDED_CALL(name) at file scope defines
//     extern "C" BOOL name(void (*function)(void*), void* argument);
// which is what the device's compiler makes of
//     __try { function(argument); return TRUE; } __except (EXCEPTION_EXECUTE_HANDLER) { return FALSE; }
// Every structured exception that no frame below handles ends the call: an access violation as well as a
// RaiseException. The frames between are left without their destructors. 32-bit builds for
// Windows are compiled but not linked; the phone's own is.
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
#elif defined(__arm__)
// Two words before the function name its handler and the scope table; the row of the function in .pdata has
// to say that they are there, which the symbol "__guarded:NAME" asks for. The table has one row: from the
// call to the instruction behind it, a filter that takes everything, going on at the last label. A C++
// exception never comes through here, so the C++ unwinder is told to stop.
// clang-format off
#define DEFINE_GUARDED_CALL(name) \
    __asm__( \
        "    .section .text." #name ",\"ax\",%progbits\n" \
        "    .p2align 2\n" \
        "    .arm\n" \
        ".L" #name "_scope:\n" \
        "    .word 1\n" \
        "    .word .L" #name "_begin, .L" #name "_end\n" \
        "    .word .L" #name "_filter, .L" #name "_raised\n" \
        ".L" #name "_filter:\n" \
        "    mov r0, #1\n" \
        "    bx lr\n" \
        "    .word __C_specific_handler\n" \
        "    .word .L" #name "_scope\n" \
        "    .globl " #name "\n" \
        "    .globl \"__guarded:" #name "\"\n" \
        "    .type " #name ", %function\n" \
        #name ":\n" \
        "\"__guarded:" #name "\":\n" \
        "    .fnstart\n" \
        "    .cantunwind\n" \
        "    stmdb sp!, {r4, lr}\n" \
        ".L" #name "_begin:\n" \
        "    mov r2, r0\n" \
        "    mov r0, r1\n" \
        "    mov lr, pc\n" \
        "    bx r2\n" \
        "    mov r0, r0\n" \
        ".L" #name "_end:\n" \
        "    mov r0, #1\n" \
        "    ldmia sp!, {r4, lr}\n" \
        "    bx lr\n" \
        ".L" #name "_raised:\n" \
        "    mov r0, #0\n" \
        "    ldmia sp!, {r4, lr}\n" \
        "    bx lr\n" \
        "    .fnend\n" \
        "    .size " #name ", . - " #name "\n" \
        "    .text\n")
// clang-format on
#else
#define DEFINE_GUARDED_CALL(name) static_assert(true, "nothing is linked")
#endif
