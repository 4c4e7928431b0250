// Counts a thread's allocations, and takes its memory away. Replaces operator new, so one source of a program includes
// it.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace test_support {

inline thread_local bool exhausted = false;
inline thread_local std::size_t allocations = 0;  ///< so far

/// Runs `action` on this thread, which gets no memory meanwhile.
template <typename Action>
void withoutMemory(Action action) {
    exhausted = true;
    action();
    exhausted = false;
}

}  // namespace test_support

// Not inlined: the compiler would take malloc and delete for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++test_support::allocations;
    void* memory = test_support::exhausted ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
