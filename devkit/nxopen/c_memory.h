// Memory that the C interface hands out, for UF_free and UF_free_string_array.
#pragma once

#include <string>
#include <vector>

namespace devkit {

/// A new array of the numbers; null for none.
int* newNumbers(const std::vector<int>& numbers);
/// A new narrow string from a UTF-8 one; null for an empty one.
char* newString(const std::string& text);
/// A new array of new narrow strings from UTF-8 ones, null for the empty ones; null for none.
char** newStrings(const std::vector<std::string>& texts);
void freeStrings(int count, char** strings);

}  // namespace devkit
