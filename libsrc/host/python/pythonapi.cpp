#include "host/python/pythonapi.h"

namespace {

#if PY_VERSION_HEX >= 0x03080000

bool Succeeded(PyStatus status) {
    return PyStatus_Exception(status) == 0;
}

// Texts are UTF-8 whatever the locale says, so that a script reads the same everywhere.
bool PreparePython(const PythonStart& start) {
    PyPreConfig config;
    if (start.m_isIsolated)
        PyPreConfig_InitIsolatedConfig(&config);
    else
        PyPreConfig_InitPythonConfig(&config);
    config.configure_locale = 0;
    config.coerce_c_locale = 0;
    config.coerce_c_locale_warn = 0;
    config.parse_argv = 0;
    config.utf8_mode = 1;
    return Succeeded(Py_PreInitialize(&config));
}

// The program's name says where Python's own library is. The first python3 of the PATH, which it
// would be otherwise, may belong to another version.
bool FillConfig(PyConfig& config, const PythonStart& start) {
    config.parse_argv = 0;
    config.configure_c_stdio = 0;
    config.install_signal_handlers = start.m_installsSignalHandlers ? 1 : 0;
    return Succeeded(PyConfig_SetBytesString(&config, &config.program_name, TZ_PYTHON_PROGRAM)) &&
           (start.m_home == nullptr ||
            Succeeded(PyConfig_SetBytesString(&config, &config.home, start.m_home)));
}

#endif

}  // namespace

#if PY_VERSION_HEX >= 0x03080000

bool StartPython(const PythonStart& start) {
    if (!PreparePython(start)) return false;
    PyConfig config;
    if (start.m_isIsolated)
        PyConfig_InitIsolatedConfig(&config);
    else
        PyConfig_InitPythonConfig(&config);
    const bool started = FillConfig(config, start) && Succeeded(Py_InitializeFromConfig(&config));
    PyConfig_Clear(&config);
    return started && Py_IsInitialized() != 0;
}

#else

// This version knows no configuration; what it can't start with ends the process.
bool StartPython(const PythonStart& start) {
    static std::wstring home;
    if (start.m_home != nullptr) {
        const std::string bytes = start.m_home;
        home.assign(bytes.begin(), bytes.end());
        Py_SetPythonHome(&home[0]);
    }
    Py_IsolatedFlag = start.m_isIsolated ? 1 : 0;
    Py_IgnoreEnvironmentFlag = Py_IsolatedFlag;
    Py_InitializeEx(start.m_installsSignalHandlers ? 1 : 0);
    return Py_IsInitialized() != 0;
}

#endif

bool IsPythonUsable() {
#if PY_VERSION_HEX >= 0x030d0000
    const bool isStopping = Py_IsFinalizing() != 0;
#else
    const bool isStopping = _Py_IsFinalizing() != 0;
#endif
    return Py_IsInitialized() != 0 && !isStopping;
}

PyRef TakePythonError() {
#if PY_VERSION_HEX >= 0x030c0000
    return PyRef(PyErr_GetRaisedException());
#else
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* traceback = nullptr;
    PyErr_Fetch(&type, &value, &traceback);
    if (type == nullptr) return PyRef();
    PyErr_NormalizeException(&type, &value, &traceback);
    const PyRef heldType(type);
    const PyRef heldTraceback(traceback);
    PyRef error(value);
    if (error && heldTraceback) PyException_SetTraceback(error.Get(), heldTraceback.Get());
    return error;
#endif
}

PyObject* PythonTextOfBytes(const std::string& bytes) {
    return PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()),
                                "surrogateescape");
}
