#pragma once

#include "host/runtime/tzexport.h"

#include <memory>

class CTls;

// CAppRunnerGlobalSet keeps, for the whole process, what a host gives each of its threads along for
// the scripts that they run: one pointer a thread, which the engine never looks at.
//
//     CAppRunnerGlobalSet::Instance()->SetPyFuncContext(&context);
//     CAppRunnerGlobalSet::Instance()->GetPyFuncContext();    // &context on this thread only
//
// The first call of Instance and Destroy must not run beside any other operation; a host makes its
// first call before it starts threads. Everything else is safe on any number of threads.
class TZPARSER_API CAppRunnerGlobalSet {
public:
    // The only object, made by the first call; valid until Destroy.
    static CAppRunnerGlobalSet* Instance();

    // Destroys the only object, with what all threads have set; a later Instance makes a new one.
    // Does nothing when there is none. Static, so that it may be called on a null pointer.
    static void Destroy();

    // Sets the calling thread's pointer; false when the system had no slot for it.
    bool SetPyFuncContext(void* context);
    // The calling thread's pointer; null when it has set none.
    void* GetPyFuncContext() const;

    CAppRunnerGlobalSet(const CAppRunnerGlobalSet&) = delete;
    CAppRunnerGlobalSet& operator=(const CAppRunnerGlobalSet&) = delete;

private:
    CAppRunnerGlobalSet();
    ~CAppRunnerGlobalSet();

    std::unique_ptr<CTls> m_tls;
};
