#pragma once

#include "outputwriter.h"
#include "toolerror.h"

namespace CLI {
class App;
}

// A subcommand of the program: it declares its arguments when it is made and runs with what the
// command line gave them.
class ICommand {
public:
    virtual ~ICommand() = default;

    // Whether the command line asks for this command.
    virtual bool IsChosen() const = 0;
    // Does the work. Throws CToolError when it can't be done.
    virtual ExitStatus_e Run(COutputWriter& out) const = 0;
};
