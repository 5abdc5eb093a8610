// The way out of the device's code on 32-bit Arm, which keeps the stack to four bytes where Linux's
// keeps it to eight.
#if defined(__arm__)

        .syntax unified
        .arch   armv7-a
        .fpu    neon
        .arm
        .text

// ip = the function. Its stack arguments are copied to where the stack is even: as many words as any
// call here has.
        .p2align 4
        .globl  varnix_leaveLibrary
        .hidden varnix_leaveLibrary
        .type   varnix_leaveLibrary, %function
varnix_leaveLibrary:
        push    {r4, lr}
        add     r4, sp, #8
        sub     sp, sp, #64
        bic     sp, sp, #7
        vldmia  r4, {d0-d7}
        vstmia  sp, {d0-d7}
        blx     ip
        sub     sp, r4, #8
        pop     {r4, lr}
        bx      lr
        .size   varnix_leaveLibrary, . - varnix_leaveLibrary

#endif

        .section .note.GNU-stack,"",%progbits
