// What C++ cannot express: entries that look at their caller's stack and registers.
#if defined(__aarch64__)

        .text

.macro ENTRY name
        .p2align 4
        .globl  \name
        .hidden \name
        .type   \name, %function
\name:
        .cfi_startproc
.endm

.macro END name
        .cfi_endproc
        .size   \name, . - \name
.endm

// A function with unnamed arguments: their address becomes one more named argument.
ENTRY varnix_NSLog
        mov     x1, sp
        b       varnix_logNotice
END varnix_NSLog

ENTRY varnix_CFLog
        mov     x2, sp
        b       varnix_logLevel
END varnix_CFLog

// A message: \prepare sees the registers that hold arguments, may change them, and returns the
// address where the call continues.
.macro MESSENGER name, prepare
ENTRY \name
        stp     x29, x30, [sp, #-224]!
        .cfi_def_cfa_offset 224
        .cfi_offset x29, -224
        .cfi_offset x30, -216
        mov     x29, sp
        stp     q0, q1, [sp, #16]
        stp     q2, q3, [sp, #48]
        stp     q4, q5, [sp, #80]
        stp     q6, q7, [sp, #112]
        stp     x0, x1, [sp, #144]
        stp     x2, x3, [sp, #160]
        stp     x4, x5, [sp, #176]
        stp     x6, x7, [sp, #192]
        str     x8, [sp, #208]
        add     x0, sp, #144
        add     x1, sp, #224
        bl      \prepare
        mov     x16, x0
        ldp     q0, q1, [sp, #16]
        ldp     q2, q3, [sp, #48]
        ldp     q4, q5, [sp, #80]
        ldp     q6, q7, [sp, #112]
        ldp     x0, x1, [sp, #144]
        ldp     x2, x3, [sp, #160]
        ldp     x4, x5, [sp, #176]
        ldp     x6, x7, [sp, #192]
        ldr     x8, [sp, #208]
        ldp     x29, x30, [sp], #224
        .cfi_def_cfa_offset 0
        .cfi_restore x29
        .cfi_restore x30
        br      x16
END \name
.endm

MESSENGER varnix_msgSend, varnix_prepareMessage
MESSENGER varnix_msgSendSuper, varnix_prepareSuperMessage
MESSENGER varnix_msgSendSuper2, varnix_prepareSuper2Message

#endif

        .section .note.GNU-stack,"",%progbits
