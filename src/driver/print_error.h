// The system's one table of errors.  A code is also the program's exit
// status, so every code fits in eight bits.
#ifndef FW_DRIVER_PRINT_ERROR_H
#define FW_DRIVER_PRINT_ERROR_H

#include <ostream>

// Writes the line of `code` to `out`; codes that name an object append
// ` "name"` when `name` isn't null.  Code 0 writes nothing.
void PrintError(std::ostream& out, int code, const char* name);

// The same on the standard error stream.
void PrintError(int code, const char* name);

#endif
