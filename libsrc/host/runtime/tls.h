#pragma once

#include "host/runtime/tzexport.h"

#include <pthread.h>

// CTls is a slot that holds one pointer for each thread.
//
//     CTls slot;
//     slot.SetValue(&context);    // for this thread only
//     slot.GetValue();            // &context here, null on every other thread
//
// All operations may run on any number of threads at once, but for the destructor. A slot never
// looks at what its pointers point to. The system has about a thousand slots a process.
class TZPARSER_API CTls {
public:
    CTls();
    ~CTls();
    CTls(const CTls&) = delete;
    CTls& operator=(const CTls&) = delete;

    // Sets the calling thread's pointer. False when the system had no slot or no memory left, and
    // then the pointer stays as it was.
    bool SetValue(void* value);
    // The calling thread's pointer; null until it is set.
    void* GetValue() const;

private:
    pthread_key_t m_key{};
    bool m_hasKey;
};
