#pragma once

#include <atomic>
#include <memory>

// CCopyOnWrite<T> holds a T that copies share until one of them is written.
//
//     CCopyOnWrite<Definition> mine;            // a default T, without an allocation
//     CCopyOnWrite<Definition> other = mine;    // shares
//     other.Edit().name = "x";                  // other now has its own T, mine is as it was
//
// What a caller sees is as if each holder had a deep copy. Holders may be read and copied by any
// number of threads at once; Edit needs the holder for itself, as writing a plain T would.
template <class T>
class CCopyOnWrite {
public:
    const T& operator*() const { return m_value ? *m_value : Default(); }
    const T* operator->() const { return &**this; }

    // The value for writing; valid until the holder is next copied or assigned.
    T& Edit() {
        if (!m_value) {
            m_value = std::make_shared<T>();
        } else if (m_value.use_count() > 1) {
            m_value = std::make_shared<T>(*m_value);
        } else {
            // The last other holder may have died on another thread: what it read comes before what
            // is written now.
            std::atomic_thread_fence(std::memory_order_acquire);
        }
        return *m_value;
    }

    bool SharesWith(const CCopyOnWrite& other) const { return m_value == other.m_value; }

private:
    static const T& Default() {
        static const T value{};
        return value;
    }

    std::shared_ptr<T> m_value;
};
