// Memory that the C interface hands out, for UF_free and UF_free_string_array.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace devkit {

/// A new array of `count` equal statuses; null for none.
int* newStatuses(std::size_t count, int status);
/// A new narrow string from a UTF-8 one; null for an empty one.
char* newString(const std::string& text);
/// A new array of new narrow strings from UTF-8 ones, null for the empty ones; null for none.
char** newStrings(const std::vector<std::string>& texts);
void freeStrings(int count, char** strings);

}  // namespace devkit
