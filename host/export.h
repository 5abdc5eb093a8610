// Marks what other binaries (the command, tests, framework modules) use of the host library.
#pragma once

#define HOST_EXPORT [[gnu::visibility("default")]]
