#pragma once
// The only place that includes <windows.h>. The macros that change its meaning (UNICODE, STRICT,
// the oldest Windows to run on) come from the build, so that every file sees the same declarations.
#include <windows.h>
