// The messengers for 32-bit Arm; see messenger_x86_64.S for the layouts, whose words are four bytes
// here. Only ip is free. r9 is not touched: the device's code uses it as scratch, Linux's preserves
// it.
#if defined(__arm__)

        .syntax unified
        .arch   armv7-a
        .arm
        .text

// r4 = class, r5 is free. Leaves the implementation in ip, or jumps to \miss. The implementation's
// load depends on the selector's, so that the two are read in order.
.macro FIND selector, miss
        ldr     r4, [r4, #8]
        ldr     r5, [r4]
        and     r5, r5, \selector
        add     r4, r4, r5
1:      ldr     r5, [r4, #8]
        cmp     r5, \selector
        beq     2f
        cmp     r5, #0
        beq     \miss
        add     r4, r4, #8
        b       1b
2:      eor     r5, r5, \selector
        add     r4, r4, r5
        ldr     ip, [r4, #12]
.endm

// Looks the message up in C++ with the arguments kept, then jumps, maybe with another receiver. ip =
// class to search, or zero for the receiver's own.
.macro RESOLVE receiver, selector, place, resolver=objc_resolve
        push    {r4, lr}
        .save   {r4, lr}
        push    {r0, r1, r2, r3}
        .pad    #16
        mov     r3, \selector
        mov     r0, \receiver
        mov     r1, ip
        mov     r2, r3
        bl      \resolver
        mov     ip, r0
        str     r1, [sp, #\place]
        pop     {r0, r1, r2, r3}
        pop     {r4, lr}
        bx      ip
.endm

.macro MESSENGER name
        .p2align 5
        .globl  \name
        .type   \name, %function
\name:
        .fnstart
.endm

.macro END name
        .fnend
        .size   \name, . - \name
.endm

MESSENGER objc_msgSend
        cmp     r0, #0
        beq     8f
        push    {r4, r5}
        ldr     r4, [r0]
        FIND    r1, 9f
        pop     {r4, r5}
        bx      ip
8:      mov     r1, #0
        bx      lr
9:      pop     {r4, r5}
        mov     ip, #0
        RESOLVE r0, r1, 0
END objc_msgSend

// The result's address is the first argument. For a nil receiver the sender must clear the result,
// since its size is not known here.
MESSENGER objc_msgSend_stret
        cmp     r1, #0
        bxeq    lr
        push    {r4, r5}
        ldr     r4, [r1]
        FIND    r2, 9f
        pop     {r4, r5}
        bx      ip
9:      pop     {r4, r5}
        mov     ip, #0
        RESOLVE r1, r2, 4
END objc_msgSend_stret

// The receiver's place, at this offset of the kept arguments, holds the address of a structure: the
// receiver, then the class to search.
.macro SUPER_MESSENGER name, receiver, selector, place
MESSENGER \name
        push    {r4, r5}
        ldr     r4, [\receiver, #4]
        FIND    \selector, 9f
        pop     {r4, r5}
        ldr     \receiver, [\receiver]
        bx      ip
9:      pop     {r4, r5}
        ldr     ip, [\receiver, #4]
        ldr     \receiver, [\receiver]
        RESOLVE \receiver, \selector, \place
END \name
.endm

SUPER_MESSENGER objc_msgSendSuper, r0, r1, 0
SUPER_MESSENGER objc_msgSendSuper_stret, r1, r2, 4

// The same with the class whose method is running, in the structure: its superclass is searched.
.macro SUPER2_MESSENGER name, receiver, selector, place
MESSENGER \name
        push    {r4, r5}
        ldr     r4, [\receiver, #4]
        ldr     r4, [r4, #4]
        FIND    \selector, 9f
        pop     {r4, r5}
        ldr     \receiver, [\receiver]
        bx      ip
9:      pop     {r4, r5}
        ldr     ip, [\receiver, #4]
        ldr     ip, [ip, #4]
        ldr     \receiver, [\receiver]
        RESOLVE \receiver, \selector, \place
END \name
.endm

SUPER2_MESSENGER objc_msgSendSuper2, r0, r1, 0
SUPER2_MESSENGER objc_msgSendSuper2_stret, r1, r2, 4

// Implementations that forward the message whatever methods the receiver has.
MESSENGER _objc_msgForward
        mov     ip, #0
        RESOLVE r0, r1, 0, objc_resolveForward
END _objc_msgForward

MESSENGER _objc_msgForward_stret
        mov     ip, #0
        RESOLVE r1, r2, 4, objc_resolveForward
END _objc_msgForward_stret

// Stub number n, in ip, searches the class in row n of objc_superStubTable at every call.
        .p2align 4
        .type   objc_superStub, %function
objc_superStub:
        .fnstart
        push    {r4, r5, r6, r7}
        .save   {r4, r5, r6, r7}
        ldr     r6, 4f
3:      add     r6, pc, r6
        add     r6, r6, ip, lsl #3
        ldm     r6, {r4, r7}
        FIND    r7, 9f
        pop     {r4, r5, r6, r7}
        bx      ip
9:      push    {r8, lr}
        .save   {r8, lr}
        push    {r0, r1, r2, r3}
        .pad    #16
        mov     r0, #0
        ldr     r1, [r6]
        mov     r2, r7
        bl      objc_resolve
        mov     ip, r0
        pop     {r0, r1, r2, r3}
        pop     {r8, lr}
        pop     {r4, r5, r6, r7}
        bx      ip
4:      .word   objc_superStubTable - (3b + 8)
        .fnend

        .p2align 4
        .globl  objc_superStubs
        .hidden objc_superStubs
objc_superStubs:
        .set    index, 0
        .rept   512
        .p2align 4
        movw    ip, #index
        b       objc_superStub
        .set    index, index + 1
        .endr

// Calls a method's implementation with the method in the place of the selector.
MESSENGER method_invoke
        ldr     ip, [r1, #8]
        ldr     r1, [r1]
        bx      ip
END method_invoke

MESSENGER method_invoke_stret
        ldr     ip, [r2, #8]
        ldr     r2, [r2]
        bx      ip
END method_invoke_stret

// Implementations made of blocks: stub number n, in ip, calls the block in row n of
// objc_blockStubTable with itself, the receiver and the arguments: the selector's place is free. A
// block that returns a structure through its first argument says so in its flags.
        .p2align 4
        .type   objc_blockStub, %function
objc_blockStub:
        .fnstart
        push    {r4, r5}
        .save   {r4, r5}
        ldr     r4, 4f
3:      add     r4, pc, r4
        ldr     ip, [r4, ip, lsl #2]
        ldr     r5, [ip, #4]
        tst     r5, #(1 << 29)
        pop     {r4, r5}
        movne   r2, r1
        movne   r1, ip
        moveq   r1, r0
        moveq   r0, ip
        ldr     ip, [ip, #12]
        bx      ip
4:      .word   objc_blockStubTable - (3b + 8)
        .fnend

        .p2align 4
        .globl  objc_blockStubs
        .hidden objc_blockStubs
objc_blockStubs:
        .set    index, 0
        .rept   2048
        .p2align 4
        movw    ip, #index
        b       objc_blockStub
        .set    index, index + 1
        .endr

#endif

        .section .note.GNU-stack,"",%progbits
