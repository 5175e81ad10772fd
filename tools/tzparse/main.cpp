#include "program.h"

#include <csignal>

// A reader that goes away is told by the failing write, not by a signal.
int main(int argumentCount, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    return RunProgram(argumentCount, arguments);
}
