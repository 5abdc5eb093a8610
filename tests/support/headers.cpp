// What is compiled is the header beside this file.
