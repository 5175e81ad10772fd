#pragma once

// The design reader of the process: what design reader rules hand their lines to. The engine brings
// none; a host that has one says so at its start:
//
//     class Reader : public IDesignReader {
//         bool Select(const std::string& name, const std::string& code, const std::string& text,
//                     std::string& selected) override;
//     };
//     SetDesignReader(std::make_shared<Reader>());
//
// All operations may be called from any thread at any time.

#include "host/runtime/tzexport.h"

#include <memory>
#include <string>

class TZPARSER_API IDesignReader {
public:
    virtual ~IDesignReader() = default;

    // Selects lines of a text. Name and code are those of the rule's definition, in a language that
    // host and author agree on; the lines of the text are parted by "\r\n". `selected`, empty at
    // first, gets the chosen lines parted by line feeds, each equal to a line of the text but for
    // white space at its ends. False, or an exception, is a failure and selects nothing.
    //
    // Called once a run of a rule, also for an empty text, by all threads that parse, several at
    // once. It may parse texts itself.
    virtual bool Select(const std::string& name, const std::string& code, const std::string& text,
                        std::string& selected) = 0;
};

// Puts the host's reader in force for runs that begin from now on; null takes it away again. Runs
// that are using the former one keep it alive until they are done.
TZPARSER_API void SetDesignReader(std::shared_ptr<IDesignReader> reader);

// The reader in force; null when none was set.
TZPARSER_API std::shared_ptr<IDesignReader> GetDesignReader();
