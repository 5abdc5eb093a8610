// What C++ cannot express, for 32-bit Arm: the device's code aligns the stack to four bytes,
// Linux's to eight.
#if defined(__arm__)

        .syntax unified
        .arch   armv7-a
        .fpu    neon
        .arm
        .text

.macro ENTRY name
        .p2align 4
        .globl  \name
        .hidden \name
        .type   \name, %function
\name:
.endm

.macro END name
        .size   \name, . - \name
.endm

// ip = the function. Its stack arguments are copied to an aligned stack: as many words as any call
// here has. What it throws is passed to the caller. This is in a section of its own: in the common
// one, its unwind entry would apply to all functions below.
        .pushsection .text.varnix_leaveLibrary, "ax", %progbits
ENTRY varnix_leaveLibrary
        .fnstart
        push    {r4, lr}
        .save   {r4, lr}
        add     r4, sp, #8
        .setfp  r4, sp, #8
        sub     sp, sp, #64
        bic     sp, sp, #7
        vldmia  r4, {d0-d7}
        vstmia  sp, {d0-d7}
        blx     ip
        sub     sp, r4, #8
        pop     {r4, lr}
        bx      lr
        .fnend
END varnix_leaveLibrary
        .popsection

// \words = the arguments in one row, followed by the stack's; the stack is aligned.
.macro SPILL words
        push    {r0, r1, r2, r3}
        push    {r4, lr}
        mov     r4, sp
        add     \words, sp, #8
        bic     sp, sp, #7
.endm

// Functions with unnamed arguments: their address becomes one more named argument.
ENTRY varnix_NSLog
        SPILL   r1
        add     r1, r1, #4
        bl      varnix_logNotice
        b       1f
END varnix_NSLog

ENTRY varnix_CFLog
        SPILL   r2
        add     r2, r2, #8
        bl      varnix_logLevel
1:      mov     sp, r4
        pop     {r4, lr}
        add     sp, sp, #16
        bx      lr
END varnix_CFLog

// A message: \prepare sees the words that hold arguments, may change them, and returns the address
// where the call continues.
.macro MESSENGER name, prepare
ENTRY \name
        SPILL   r0
        add     r1, r0, #16
        bl      \prepare
        mov     ip, r0
        mov     sp, r4
        pop     {r4, lr}
        pop     {r0, r1, r2, r3}
        bx      ip
END \name
.endm

MESSENGER varnix_msgSend, varnix_prepareMessage
MESSENGER varnix_msgSend_stret, varnix_prepareStretMessage
MESSENGER varnix_msgSendSuper, varnix_prepareSuperMessage
MESSENGER varnix_msgSendSuper2, varnix_prepareSuper2Message
MESSENGER varnix_msgSendSuper_stret, varnix_prepareSuperStretMessage
MESSENGER varnix_msgSendSuper2_stret, varnix_prepareSuper2StretMessage

// r0 = r7, pc and sp of a function that goes on elsewhere.
ENTRY varnix_jump
        ldr     r7, [r0]
        ldr     ip, [r0, #4]
        ldr     sp, [r0, #8]
        bx      ip
END varnix_jump

#endif

        .section .note.GNU-stack,"",%progbits
