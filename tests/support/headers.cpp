// Only compiles the header beside this file.
