// The SHA-256 digest (FIPS 180-4).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace gopiv {

/// Takes bytes in pieces of any size. Not to be shared between threads.
class Sha256 {
 public:
    void update(std::string_view bytes);
    /// The digest of all bytes, in 64 lower-case hexadecimal digits. Ends the object's use.
    std::string finish();

 private:
    void append(std::uint8_t byte);
    void digestBlock();

    std::array<std::uint32_t, 8> state_{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                        0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<std::uint8_t, 64> block_{};
    std::size_t used_ = 0;
    std::uint64_t length_ = 0;
};

}  // namespace gopiv
