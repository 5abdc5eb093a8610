// The messengers for x86-64: find the implementation in the class's cache and jump to it with all
// arguments in place. Layouts: object { isa }, class { isa, superclass, cache at 16 },
// cache { byteMask, used, buckets at 16 }, bucket { selector, implementation }.
// Only r10 and r11 are free: rax counts the vector registers of a variadic call.
#if defined(__x86_64__)

        .text

// r11 = class. Leaves r10 so that 24(%r10) is the implementation, or jumps to \miss.
// A checked build looks every message up in C++, where a sanitizer sees the receiver.
.macro FIND selector, miss
#if defined(VARNIX_CHECKED_SENDS)
        jmp     \miss
#else
        movq    16(%r11), %r10
        movq    (%r10), %r11
        andq    \selector, %r11
        addq    %r11, %r10
1:      cmpq    \selector, 16(%r10)
        je      2f
        cmpq    $0, 16(%r10)
        je      \miss
        addq    $16, %r10
        jmp     1b
2:
#endif
.endm

// Looks the message up in C++ with the arguments kept on the stack, then jumps, maybe with another
// receiver. r11 = class to search, or zero for the receiver's own.
.macro RESOLVE receiver, selector, resolver=objc_resolve
        pushq   %rbp
        .cfi_def_cfa_offset 16
        .cfi_offset %rbp, -16
        movq    %rsp, %rbp
        .cfi_def_cfa_register %rbp
        subq    $192, %rsp
        movaps  %xmm0, (%rsp)
        movaps  %xmm1, 16(%rsp)
        movaps  %xmm2, 32(%rsp)
        movaps  %xmm3, 48(%rsp)
        movaps  %xmm4, 64(%rsp)
        movaps  %xmm5, 80(%rsp)
        movaps  %xmm6, 96(%rsp)
        movaps  %xmm7, 112(%rsp)
        movq    %rdi, 128(%rsp)
        movq    %rsi, 136(%rsp)
        movq    %rdx, 144(%rsp)
        movq    %rcx, 152(%rsp)
        movq    %r8, 160(%rsp)
        movq    %r9, 168(%rsp)
        movq    %rax, 176(%rsp)
        movq    \receiver, %rax
        movq    \selector, %rdx
        movq    %rax, %rdi
        movq    %r11, %rsi
        call    \resolver
        movq    %rax, %r11
        .ifc \receiver, %rdi
        movq    %rdx, 128(%rsp)
        .endif
        .ifc \receiver, %rsi
        movq    %rdx, 136(%rsp)
        .endif
        movaps  (%rsp), %xmm0
        movaps  16(%rsp), %xmm1
        movaps  32(%rsp), %xmm2
        movaps  48(%rsp), %xmm3
        movaps  64(%rsp), %xmm4
        movaps  80(%rsp), %xmm5
        movaps  96(%rsp), %xmm6
        movaps  112(%rsp), %xmm7
        movq    128(%rsp), %rdi
        movq    136(%rsp), %rsi
        movq    144(%rsp), %rdx
        movq    152(%rsp), %rcx
        movq    160(%rsp), %r8
        movq    168(%rsp), %r9
        movq    176(%rsp), %rax
        leave
        .cfi_def_cfa %rsp, 8
        jmp     *%r11
.endm

.macro MESSENGER name
        .p2align 5
        .globl  \name
        .type   \name, @function
\name:
        .cfi_startproc
.endm

.macro END name
        .cfi_endproc
        .size   \name, . - \name
.endm

MESSENGER objc_msgSend
        testq   %rdi, %rdi
        jz      8f
        movq    (%rdi), %r11
        FIND    %rsi, 9f
        jmp     *24(%r10)
8:      xorl    %eax, %eax
        xorl    %edx, %edx
        xorps   %xmm0, %xmm0
        xorps   %xmm1, %xmm1
        ret
9:      xorl    %r11d, %r11d
        RESOLVE %rdi, %rsi
END objc_msgSend

// The result's address is the first argument. For a nil receiver the sender must clear the result,
// since its size is not known here.
MESSENGER objc_msgSend_stret
        testq   %rsi, %rsi
        jz      8f
        movq    (%rsi), %r11
        FIND    %rdx, 9f
        jmp     *24(%r10)
8:      movq    %rdi, %rax
        ret
9:      xorl    %r11d, %r11d
        RESOLVE %rsi, %rdx
END objc_msgSend_stret

// For a nil receiver the result is zero in the x87 registers: one long double, or a complex one.
MESSENGER objc_msgSend_fpret
        testq   %rdi, %rdi
        jz      8f
        movq    (%rdi), %r11
        FIND    %rsi, 9f
        jmp     *24(%r10)
8:      fldz
        ret
9:      xorl    %r11d, %r11d
        RESOLVE %rdi, %rsi
END objc_msgSend_fpret

MESSENGER objc_msgSend_fp2ret
        testq   %rdi, %rdi
        jz      8f
        movq    (%rdi), %r11
        FIND    %rsi, 9f
        jmp     *24(%r10)
8:      fldz
        fldz
        ret
9:      xorl    %r11d, %r11d
        RESOLVE %rdi, %rsi
END objc_msgSend_fp2ret

// The place of the receiver has the address of a structure: the receiver, then the class to search.
.macro SUPER_MESSENGER name, receiver, selector
MESSENGER \name
        movq    8(\receiver), %r11
        FIND    \selector, 9f
        movq    (\receiver), \receiver
        jmp     *24(%r10)
9:      movq    8(\receiver), %r11
        movq    (\receiver), \receiver
        RESOLVE \receiver, \selector
END \name
.endm

SUPER_MESSENGER objc_msgSendSuper, %rdi, %rsi
SUPER_MESSENGER objc_msgSendSuper_stret, %rsi, %rdx

// The same with the class whose method is running, in the structure: its superclass is searched.
.macro SUPER2_MESSENGER name, receiver, selector
MESSENGER \name
        movq    8(\receiver), %r11
        movq    8(%r11), %r11
        FIND    \selector, 9f
        movq    (\receiver), \receiver
        jmp     *24(%r10)
9:      movq    8(\receiver), %r11
        movq    8(%r11), %r11
        movq    (\receiver), \receiver
        RESOLVE \receiver, \selector
END \name
.endm

SUPER2_MESSENGER objc_msgSendSuper2, %rdi, %rsi
SUPER2_MESSENGER objc_msgSendSuper2_stret, %rsi, %rdx

// Implementations that forward the message whatever methods the receiver has.
MESSENGER _objc_msgForward
        xorl    %r11d, %r11d
        RESOLVE %rdi, %rsi, objc_resolveForward
END _objc_msgForward

MESSENGER _objc_msgForward_stret
        xorl    %r11d, %r11d
        RESOLVE %rsi, %rdx, objc_resolveForward
END _objc_msgForward_stret

// The saved implementations of hooked methods that were inherited: stub number n searches the
// class in row n of objc_superStubTable { class, selector } at every call.
        .p2align 4
        .type   objc_superStub, @function
objc_superStub:
        .cfi_startproc
        pushq   %rax
        .cfi_adjust_cfa_offset 8
        shlq    $4, %r11
        leaq    objc_superStubTable(%rip), %r10
        addq    %r10, %r11
        pushq   %r11
        .cfi_adjust_cfa_offset 8
        movq    8(%r11), %rax
        movq    (%r11), %r11
        FIND    %rax, 9f
        addq    $8, %rsp
        .cfi_adjust_cfa_offset -8
        popq    %rax
        .cfi_adjust_cfa_offset -8
        jmp     *24(%r10)
        .cfi_adjust_cfa_offset 16
9:      popq    %r10
        .cfi_adjust_cfa_offset -8
        popq    %rax
        .cfi_adjust_cfa_offset -8
        movq    (%r10), %r11
        movq    8(%r10), %r10
        RESOLVE $0, %r10
        .cfi_endproc

        .p2align 4
        .globl  objc_superStubs
        .hidden objc_superStubs
objc_superStubs:
        .set    index, 0
        .rept   512
        .p2align 4
        movl    $index, %r11d
        jmp     objc_superStub
        .set    index, index + 1
        .endr

// Calls a method's implementation with the method in the place of the selector.
MESSENGER method_invoke
        movq    16(%rsi), %r11
        movq    (%rsi), %rsi
        jmp     *%r11
END method_invoke

MESSENGER method_invoke_stret
        movq    16(%rdx), %r11
        movq    (%rdx), %rdx
        jmp     *%r11
END method_invoke_stret

// Implementations made of blocks: stub number n calls the block in row n of objc_blockStubTable with
// itself, the receiver and the arguments: the selector's place is free. A block that returns a
// structure through its first argument says so in its flags.
        .p2align 4
        .type   objc_blockStub, @function
objc_blockStub:
        .cfi_startproc
        leaq    objc_blockStubTable(%rip), %r10
        movq    (%r10,%r11,8), %r10
        testl   $(1 << 29), 8(%r10)
        jnz     1f
        movq    %rdi, %rsi
        movq    %r10, %rdi
        jmp     *16(%r10)
1:      movq    %rsi, %rdx
        movq    %r10, %rsi
        jmp     *16(%r10)
        .cfi_endproc

        .p2align 4
        .globl  objc_blockStubs
        .hidden objc_blockStubs
objc_blockStubs:
        .set    index, 0
        .rept   2048
        .p2align 4
        movl    $index, %r11d
        jmp     objc_blockStub
        .set    index, index + 1
        .endr

#endif

        .section .note.GNU-stack,"",%progbits
