// The page's files, byte for byte. The folder they lie in is on the include path.
        .section .rodata

.macro EMBED name, file
        .globl  \name
        .hidden \name
        .globl  \name\()End
        .hidden \name\()End
\name:
        .incbin "\file"
\name\()End:
        .byte   0
.endm

        EMBED   varnixPageHtml, page.html
        EMBED   varnixPageStyle, style.css
        EMBED   varnixPageScript, page.js

        .section .note.GNU-stack, "", %progbits
