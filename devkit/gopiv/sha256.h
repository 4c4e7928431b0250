// The SHA-256 digest (FIPS 180-4).
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <functional>
#include <string>

namespace gopiv {

inline constexpr std::array<std::uint32_t, 64> roundConstants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

inline std::array<std::uint32_t, 64> messageSchedule(const std::string& bytes, std::size_t start) {
    std::array<std::uint32_t, 64> words{};
    for (std::size_t i = 0; i < 64; ++i)
        words[i / 4] = words[i / 4] << 8U | static_cast<unsigned char>(bytes[start + i]);
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t a = words[i - 15];
        const std::uint32_t b = words[i - 2];
        words[i] = words[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3U) + words[i - 7] +
                   (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10U);
    }
    return words;
}

/// Appends the bit 1, zeros up to 8 bytes before the end of a block, and the length in bits.
inline void pad(std::string& bytes) {
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    bytes.append(1, '\x80').append((119 - bits / 8 % 64) % 64, '\0');
    for (unsigned shift = 64; shift != 0; shift -= 8) bytes += static_cast<char>(bits >> (shift - 8));
}

/// The digest of `bytes` as 64 lower-case hexadecimal digits.
inline std::string sha256(std::string bytes) {
    std::array<std::uint32_t, 8> state{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                       0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    pad(bytes);
    for (std::size_t start = 0; start < bytes.size(); start += 64) {
        const auto words = messageSchedule(bytes, start);
        auto working = state;
        auto& [a, b, c, d, e, f, g, h] = working;
        for (std::size_t i = 0; i < 64; ++i) {
            const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                        ((e & f) ^ (~e & g)) + roundConstants[i] + words[i];
            const std::uint32_t second =
                (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
            std::rotate(working.begin(), working.end() - 1, working.end());
            e += first;
            a = first + second;
        }
        std::transform(state.begin(), state.end(), working.begin(), state.begin(), std::plus());
    }
    std::string digest;
    for (const std::uint32_t word : state)
        for (unsigned shift = 32; shift != 0; shift -= 4) digest += "0123456789abcdef"[word >> (shift - 4) & 15U];
    return digest;
}

}  // namespace gopiv
