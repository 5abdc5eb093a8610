// The messengers for 64-bit Arm; see messenger_x86_64.S for the layouts. A structure's result
// address is passed in x8, so there is one entry point for all results.
#if defined(__aarch64__)

#include "runtime/arguments_aarch64.inc"

        .text

// x9 = class. Jumps to the implementation, or to \miss. The implementation's load depends on the
// selector's, so that the two are read in order.
.macro FIND selector, miss
        ldr     x10, [x9, #16]
        ldr     x11, [x10]
        and     x11, x11, \selector
        add     x10, x10, x11
1:      ldr     x12, [x10, #16]
        cmp     x12, \selector
        b.eq    2f
        cbz     x12, \miss
        add     x10, x10, #16
        b       1b
2:      eor     x12, x12, \selector
        add     x10, x10, x12
        ldr     x16, [x10, #24]
.endm

// x9 = class to search, or zero for the receiver's own; x10 = receiver, x11 = selector. The message
// may get another receiver.
.macro RESOLVE resolver=objc_resolve, keeps=0
        SAVE_ARGUMENTS
        mov     x0, x10
        mov     x1, x9
        mov     x2, x11
        bl      \resolver
        mov     x16, x0
        .if \keeps == 0
        str     x1, [sp, #ARGUMENTS]
        .endif
        RESTORE_ARGUMENTS
        br      x16
.endm

.macro MESSENGER name
        .p2align 5
        .globl  \name
        .type   \name, %function
\name:
        .cfi_startproc
.endm

.macro END name
        .cfi_endproc
        .size   \name, . - \name
.endm

MESSENGER objc_msgSend
        cbz     x0, 8f
        ldr     x9, [x0]
        FIND    x1, 9f
        br      x16
8:      mov     x1, #0
        movi    v0.2d, #0
        movi    v1.2d, #0
        movi    v2.2d, #0
        movi    v3.2d, #0
        ret
9:      mov     x9, #0
        mov     x10, x0
        mov     x11, x1
        RESOLVE
END objc_msgSend

MESSENGER objc_msgSendSuper
        ldr     x9, [x0, #8]
        FIND    x1, 9f
        ldr     x0, [x0]
        br      x16
9:      ldr     x9, [x0, #8]
        ldr     x0, [x0]
        mov     x10, x0
        mov     x11, x1
        RESOLVE
END objc_msgSendSuper

// The structure has the class whose method is running: its superclass is searched.
MESSENGER objc_msgSendSuper2
        ldr     x9, [x0, #8]
        ldr     x9, [x9, #8]
        FIND    x1, 9f
        ldr     x0, [x0]
        br      x16
9:      ldr     x9, [x0, #8]
        ldr     x9, [x9, #8]
        ldr     x0, [x0]
        mov     x10, x0
        mov     x11, x1
        RESOLVE
END objc_msgSendSuper2

// An implementation that forwards the message whatever methods the receiver has.
MESSENGER _objc_msgForward
        mov     x9, #0
        mov     x10, x0
        mov     x11, x1
        RESOLVE objc_resolveForward
END _objc_msgForward

// Stub number n searches the class in row n of objc_superStubTable at every call.
        .p2align 4
        .type   objc_superStub, %function
objc_superStub:
        .cfi_startproc
        adrp    x17, objc_superStubTable
        add     x17, x17, :lo12:objc_superStubTable
        add     x17, x17, x16, lsl #4
        ldp     x9, x13, [x17]
        FIND    x13, 9f
        br      x16
9:      mov     x10, #0
        mov     x11, x13
        RESOLVE keeps=1
        .cfi_endproc

        .p2align 4
        .globl  objc_superStubs
        .hidden objc_superStubs
objc_superStubs:
        .set    index, 0
        .rept   512
        .p2align 4
        mov     x16, #index
        b       objc_superStub
        .set    index, index + 1
        .endr

// Calls a method's implementation with the method in the place of the selector.
MESSENGER method_invoke
        ldr     x16, [x1, #16]
        ldr     x1, [x1]
        br      x16
END method_invoke

// Implementations made of blocks: stub number n calls the block in row n of objc_blockStubTable with
// itself, the receiver and the arguments: the selector's place is free.
        .p2align 4
        .type   objc_blockStub, %function
objc_blockStub:
        .cfi_startproc
        adrp    x17, objc_blockStubTable
        add     x17, x17, :lo12:objc_blockStubTable
        mov     x1, x0
        ldr     x0, [x17, x16, lsl #3]
        ldr     x16, [x0, #16]
        br      x16
        .cfi_endproc

        .p2align 4
        .globl  objc_blockStubs
        .hidden objc_blockStubs
objc_blockStubs:
        .set    index, 0
        .rept   2048
        .p2align 4
        mov     x16, #index
        b       objc_blockStub
        .set    index, index + 1
        .endr

#endif

        .section .note.GNU-stack,"",%progbits
