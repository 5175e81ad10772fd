#include "designreaderhandle.h"

#include "host/python/pythreadstatelock.h"
#include "tzparser/select/designreader.h"

#include "pythonsupport.h"

#include <boost/python/errors.hpp>

namespace {

// A callable as a design reader. Threads that parse don't hold the interpreter, so each call takes
// it, and so does the end of the object, which may come in any of them.
class CPythonDesignReader final : public IDesignReader {
public:
    explicit CPythonDesignReader(PyObject* callable) : m_callable(PyRef::Share(callable)) {}
    ~CPythonDesignReader() override {
        const PyThreadStateLock lock(LockWait, __FILE__, __LINE__);
        if (lock.IsHeld())
            m_callable = PyRef();
        else
            m_callable.Release();  // its interpreter is gone
    }

    bool Select(const std::string& name, const std::string& code, const std::string& text,
                std::string& selected) override {
        const PyThreadStateLock lock(LockWait, __FILE__, __LINE__);
        if (!lock.IsHeld()) return false;
        if (Call(name, code, text, selected)) return true;
        TellError();
        return false;
    }

private:
    static constexpr int LockWait = 1000;

    // False with a pending error.
    bool Call(const std::string& name, const std::string& code, const std::string& text,
              std::string& selected) const {
        try {
            const auto nameObject = TextObject(name);
            const auto codeObject = TextObject(code);
            const auto textObject = TextObject(text);
            const PyRef answer(PyObject_CallFunctionObjArgs(
                m_callable.Get(), nameObject.Get(), codeObject.Get(), textObject.Get(), nullptr));
            if (!answer) return false;
            selected = BytesOf(answer.Get());
            return true;
        } catch (const boost::python::error_already_set&) {
            return false;
        }
    }

    // A parse can't raise in the middle of its rules, so Ctrl-C is handed on to the main thread.
    void TellError() const {
        if (PyErr_ExceptionMatches(PyExc_KeyboardInterrupt) != 0) {
            PyErr_Clear();
            PyErr_SetInterrupt();
            return;
        }
        PyErr_WriteUnraisable(m_callable.Get());
    }

    PyRef m_callable;
};

}  // namespace

void SetDesignReaderObject(const boost::python::object& reader) {
    std::shared_ptr<IDesignReader> made;
    if (!reader.is_none()) {
        if (PyCallable_Check(reader.ptr()) == 0) {
            PyErr_SetString(PyExc_TypeError, "a design reader is callable or None");
            boost::python::throw_error_already_set();
        }
        made = std::make_shared<CPythonDesignReader>(reader.ptr());
    }
    const CPythonReleased released;  // the former reader may end here and takes the interpreter
    SetDesignReader(std::move(made));
}
