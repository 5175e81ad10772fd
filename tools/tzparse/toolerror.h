#pragma once

#include <stdexcept>
#include <string>

// The exit statuses of the program.
enum ExitStatus_e {
    ExitStatus_Ok = 0,
    ExitStatus_Failed = 1,    // the text couldn't be parsed, or the check found something
    ExitStatus_Unusable = 2,  // bad usage, a file that can't be read or written, no JSON
};

// CToolError ends the program with words for the user and an exit status.
//
//     throw CToolError(ExitStatus_Unusable, "cannot read 'x': " + reason);
class CToolError : public std::runtime_error {
public:
    CToolError(ExitStatus_e status, const std::string& words)
        : std::runtime_error(words), m_status(status) {}

    ExitStatus_e Status() const { return m_status; }

private:
    ExitStatus_e m_status;
};
