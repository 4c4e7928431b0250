#include "text.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <random>

namespace gopiv {

std::string utcNow() {
    using namespace std::chrono;
    const auto now = floor<seconds>(system_clock::now());
    const auto today = floor<days>(now);
    const year_month_day date(today);
    const hh_mm_ss time(now - today);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text.data();
}

std::string randomSecret() {
    std::random_device device;
    std::string secret;
    while (secret.size() < 64) {
        std::array<char, 9> digits{};
        std::snprintf(digits.data(), digits.size(), "%08x", static_cast<unsigned>(device()));
        secret += digits.data();
    }
    return secret;
}

std::filesystem::path pathFromUtf8(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

std::string utf8FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace gopiv
