// Options of the leak checker, built in with it alone. The library for Python classes keeps the
// names of types that it has written out in a static list, which is gone when the checker looks; to
// know such a place by its caller, the checker needs whole stacks.

extern "C" {

const char* __asan_default_options();
const char* __lsan_default_suppressions();

__attribute__((visibility("default"))) const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}

__attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:boost::python::detail::gcc_demangle";
}
}
