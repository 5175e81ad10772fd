// Part of builds under the thread checker only. boost.regex hands the memory blocks of its searches
// from thread to thread through a cache inside its shared library. That library is not
// instrumented, so the checker can't see how the cache orders the threads and reports a race. These
// two functions stand before the library's own and give each search fresh memory, in sight of the
// checker.
#include <new>

#include <boost/regex.hpp>

namespace boost::BOOST_REGEX_DETAIL_NS {

__attribute__((visibility("default"))) void* get_mem_block() {
    return ::operator new(BOOST_REGEX_BLOCKSIZE);
}

__attribute__((visibility("default"))) void put_mem_block(void* block) {
    ::operator delete(block);
}

}  // namespace boost::BOOST_REGEX_DETAIL_NS
