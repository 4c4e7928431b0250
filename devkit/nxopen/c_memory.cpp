#include "c_memory.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "host_text.h"

namespace devkit {

namespace {

template <class T>
T* allocate(std::size_t count) {
    void* memory = std::malloc(count * sizeof(T));
    if (memory == nullptr) throw std::bad_alloc();
    return static_cast<T*>(memory);
}

}  // namespace

char* newString(const std::string& text) {
    if (text.empty()) return nullptr;
    const std::string narrow = narrowFromUtf8(text);
    char* result = allocate<char>(narrow.size() + 1);
    std::memcpy(result, narrow.c_str(), narrow.size() + 1);
    return result;
}

int* newNumbers(const std::vector<int>& numbers) {
    if (numbers.empty()) return nullptr;
    int* result = allocate<int>(numbers.size());
    std::memcpy(result, numbers.data(), numbers.size() * sizeof(int));
    return result;
}

char** newStrings(const std::vector<std::string>& texts) {
    if (texts.empty()) return nullptr;
    char** result = allocate<char*>(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) result[i] = newString(texts[i]);
    return result;
}

void freeStrings(int count, char** strings) {
    if (strings == nullptr) return;
    for (int i = 0; i < count; ++i) std::free(strings[i]);
    std::free(strings);
}

}  // namespace devkit
