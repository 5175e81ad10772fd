// The memory blocks of the plain matcher's searches.
//
// The matcher takes a block for each search and gives it back, from a store that it leaves to be
// replaced. Its library's own store is shared by all threads, and each search writes to it; here
// every thread keeps a few blocks for itself. The matcher's templates are compiled into this
// library (see appregex.cpp), and nothing here is exported: a host's own use of the matcher goes on
// with the store that it had.
#include <array>
#include <cstddef>
#include <new>

#include <boost/regex.hpp>

namespace {

constexpr std::size_t Kept = 16;

// Without constructor and destructor, so that it may be used while a thread ends.
struct Store {
    std::array<void*, Kept> blocks;
    std::size_t count;
    bool isClosed;
};

thread_local Store store;

struct Closer {
    ~Closer() {
        store.isClosed = true;
        while (store.count > 0) ::operator delete(store.blocks[--store.count]);
    }
};

}  // namespace

namespace boost::BOOST_REGEX_DETAIL_NS {

void* get_mem_block() {
    if (store.count > 0) return store.blocks[--store.count];
    return ::operator new(BOOST_REGEX_BLOCKSIZE);
}

void put_mem_block(void* block) {
    thread_local const Closer closer;
    if (store.isClosed || store.count == Kept)
        ::operator delete(block);
    else
        store.blocks[store.count++] = block;
}

}  // namespace boost::BOOST_REGEX_DETAIL_NS
