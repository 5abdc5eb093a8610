// The page's files, byte for byte, and the table of them. Their folders are on the include path.
#ifdef __LP64__
#define POINTER .quad
#else
#define POINTER .long
#endif

        .section .rodata
html:   .asciz  "text/html; charset=utf-8"
css:    .asciz  "text/css; charset=utf-8"
script: .asciz  "text/javascript; charset=utf-8"

// FILE label, name
.macro FILE label, name
\label\()Name:
        .asciz  "\name"
\label\()Bytes:
.endm

        FILE    page, ""
        .incbin "studio.html"
pageEnd:
        FILE    style, "studio.css"
        .incbin "style.css"
        .incbin "studio.css"
        .incbin "contrast.css"
        .incbin "compare.css"
styleEnd:
        // The preview's script has them as plain functions.
        FILE    elements, "elements.js"
        .incbin "elements.js"
        .ascii  "export {choice, element, find, setChildren};\n"
elementsEnd:
        FILE    place, "place.js"
        .ascii  "import {element} from './elements.js';\n"
        .incbin "place.js"
        .ascii  "export {placeMarks, placeName, ratio};\n"
placeEnd:
        FILE    contrast, "contrast.js"
        .incbin "contrast.js"
contrastEnd:
        FILE    divider, "divider.js"
        .incbin "divider.js"
dividerEnd:
        FILE    compare, "compare.js"
        .incbin "compare.js"
compareEnd:
        FILE    theme, "theme.js"
        .incbin "theme.js"
themeEnd:
        FILE    colorField, "color_field.js"
        .incbin "color_field.js"
colorFieldEnd:
        FILE    dropping, "dropping.js"
        .incbin "dropping.js"
droppingEnd:
        FILE    materials, "materials.js"
        .incbin "materials.js"
materialsEnd:
        FILE    controls, "controls.js"
        .incbin "controls.js"
controlsEnd:
        FILE    screens, "screens.js"
        .incbin "screens.js"
screensEnd:
        FILE    exports, "exports.js"
        .incbin "exports.js"
exportsEnd:
        FILE    bar, "bar.js"
        .incbin "bar.js"
barEnd:
        FILE    main, "studio.js"
        .incbin "studio.js"
mainEnd:

.macro ROW label, type
        POINTER \label\()Name, \type, \label\()Bytes, \label\()End
.endm

        .section .data.rel.ro, "aw"
        .balign 8
        .globl  varnixStudioFiles
        .hidden varnixStudioFiles
        .globl  varnixStudioFilesEnd
        .hidden varnixStudioFilesEnd
varnixStudioFiles:
        ROW     page, html
        ROW     style, css
        ROW     elements, script
        ROW     place, script
        ROW     contrast, script
        ROW     divider, script
        ROW     compare, script
        ROW     theme, script
        ROW     colorField, script
        ROW     dropping, script
        ROW     materials, script
        ROW     controls, script
        ROW     screens, script
        ROW     exports, script
        ROW     bar, script
        ROW     main, script
varnixStudioFilesEnd:

        .section .note.GNU-stack, "", %progbits
