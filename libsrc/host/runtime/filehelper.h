#pragma once

#include "host/runtime/tzexport.h"

#include <string>

// FileHelper writes files whose place other users of the machine may know beforehand, such as dumps
// in the folder for temporary files.
//
//     FileHelper::SaveToFile(program, TzFileSystem::GetTempFolder() + "ParserError/1f.pars");
//
// Safe on any thread and in several processes at once: of two that write one file the last wins.
class TZPARSER_API FileHelper {
public:
    // Writes a file that only this user can read, whole or not at all: it is written under another
    // name in the same folder and then moved into place. What stood at the path is replaced; a
    // symbolic link there is replaced itself, never followed. The last folder of the path is made
    // when it is missing, for this user alone. It must be a folder and no link, must belong to this
    // user or to the system, and others mustn't be able to move its files. False, with nothing left
    // behind, when anything of this fails.
    static bool SaveToFile(const std::string& content, const std::string& path);
};
