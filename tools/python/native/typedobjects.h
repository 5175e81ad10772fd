#pragma once

#include "host/python/tzp3typeobject.h"
#include "tzparser/text/apptextlet.h"
#include "tzparser/variable/appdatatype.h"

#include <memory>

struct _object;

// CTypedObjects makes the Python objects of values of one data type, found out once for a column.
//
//     const CTypedObjects objects(AppDataType_Int);
//     PyObject* number = objects.Make(&let);           // a new reference
//
// For one thread, which holds the interpreter.
class CTypedObjects {
public:
    explicit CTypedObjects(AppDataType_e type);

    // The object that scripts know for the let's text; the text itself when the type has no such
    // objects. None for null, for a let without text and for a text that is no value of the type.
    // Null, with a pending error, for want of memory.
    _object* Make(const CAppTextLet* let) const;

private:
    std::unique_ptr<TzP3TypeObject> m_type;  // none: the values are texts
};
