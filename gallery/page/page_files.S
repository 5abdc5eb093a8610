// The page's files, byte for byte. Their folder is on the include path.
        .section .rodata

.macro START name
        .globl  \name
        .hidden \name
\name:
.endm

.macro END name
        .globl  \name\()End
        .hidden \name\()End
\name\()End:
        .byte   0
.endm

        START   varnixPageHtml
        .incbin "page.html"
        END     varnixPageHtml

        START   varnixPageStyle
        .incbin "style.css"
        END     varnixPageStyle

        // One script: later files use earlier ones.
        START   varnixPageScript
        .ascii  "'use strict';\n"
        .incbin "elements.js"
        .incbin "screen.js"
        .incbin "place.js"
        .incbin "lens.js"
        .incbin "surfaces.js"
        .incbin "page.js"
        .incbin "follow.js"
        END     varnixPageScript

        .section .note.GNU-stack, "", %progbits
