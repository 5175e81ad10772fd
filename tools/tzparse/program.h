#pragma once

// Runs the program with its command line and gives the exit status. What the user asked for goes to
// standard output, all complaints to standard error, each with the program's name in front. Throws
// nothing.
int RunProgram(int argumentCount, const char* const* arguments);
