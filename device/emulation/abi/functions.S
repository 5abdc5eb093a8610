// What C++ cannot express: entries that look at their caller's stack and registers.
#if defined(__aarch64__)

#include "runtime/arguments_aarch64.inc"

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
        SAVE_ARGUMENTS
        add     x0, sp, #ARGUMENTS
        add     x1, sp, #ARGUMENTS_FRAME
        bl      \prepare
        mov     x16, x0
        RESTORE_ARGUMENTS
        br      x16
END \name
.endm

MESSENGER varnix_msgSend, varnix_prepareMessage
MESSENGER varnix_msgSendSuper, varnix_prepareSuperMessage
MESSENGER varnix_msgSendSuper2, varnix_prepareSuper2Message

#endif

        .section .note.GNU-stack,"",%progbits
