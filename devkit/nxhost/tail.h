// New lines of a file that others append to.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace nxhost {

class Tail {
 public:
    explicit Tail(std::filesystem::path file) : file_(std::move(file)) {}

    /// The whole lines written since the last call, without their ends (LF, CR LF). A file that has become shorter is
    /// read from its beginning.
    std::vector<std::string> newLines();

 private:
    std::filesystem::path file_;
    std::uintmax_t read_ = 0;
};

}  // namespace nxhost
