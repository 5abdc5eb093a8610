# Objective-C for Linux as phones' compilers write it. Only clang writes the platform's kind of class data,
# so it compiles these files whatever compiles the rest. To be included where languages may be enabled.
find_program(CMAKE_OBJC_COMPILER NAMES clang-19 clang REQUIRED)
# How precompiled headers are made is not kept for each language, and this is another compiler.
set(pch_variables CMAKE_PCH_EXTENSION CMAKE_PCH_PROLOGUE CMAKE_PCH_EPILOGUE)
foreach(variable IN LISTS pch_variables)
  set(saved_${variable} "${${variable}}")
endforeach()
enable_language(OBJC)
foreach(variable IN LISTS pch_variables)
  set(${variable} "${saved_${variable}}")
endforeach()

# Linux and the platform's run-time do not go together: these options ask for both. The sections come out
# without the segments' names, so the linker gives their bounds.
set(VARNIX_OBJECTIVE_C_OPTIONS -fobjc-runtime=macosx-10.15 -fblocks -fobjc-exceptions -fexceptions
    -fvisibility=hidden)
