// What the two commands of the project, fw_compiler and fw_config, do the
// same way before they read a configuration: log and catalogue set-up, the
// signals that end a run, the host, and the change to the working
// directory.  Each failure here ends the process with its status.
#ifndef FW_DRIVER_PROGRAM_H
#define FW_DRIVER_PROGRAM_H

#include <string>

// Sets up the log and the message catalogue and makes the signals 1 and 15
// (and 11, outside sanitizer builds) end the run with a line naming
// `program` and status 1.  `program` must outlive the run.
void program_start(const char* program);
// Answers the host questions from the description file that the
// environment names, if any; a bad one ends the run with status 1.
void program_select_host();
// The screen to compile: `given`, or without one the first word of the etc
// directory's "name" file; with neither the run ends with status 3.
std::string program_screen(const char* given);
// Makes `directory` the working directory; ends the run with the errno
// status when it can't be entered.
void program_enter_directory(const char* directory);

#endif
