#pragma once

#include "host/runtime/tzexport.h"

#include <string>

// TzFileSystem knows the folders of the machine.
//
//     TzFileSystem::GetTempFolder() + "ParserError/"    // "/tmp/ParserError/"
//
// Safe on any thread, as long as none changes the environment.
class TZPARSER_API TzFileSystem {
public:
    // The folder for temporary files, absolute and ending in "/": the one that the environment
    // variable TMPDIR names when it is a folder (programs that run with another user's rights don't
    // look at it), else "/tmp/".
    static std::string GetTempFolder();
};
