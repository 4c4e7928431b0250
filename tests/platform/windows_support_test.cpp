#include "platform/windows_support.h"
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

/// A system that holds `text` and cuts it to the room there is, as `GetModuleFileNameW` does.
struct CuttingSystem {
    std::wstring text;
    std::size_t calls = 0;

    std::size_t operator()(wchar_t* buffer, std::size_t size) {
        ++calls;
        const auto written = std::min(text.size(), size - 1);
        std::copy_n(text.begin(), written, buffer);
        return text.size() < size ? written : size;
    }
};

/// A system that holds a text which may change from call to call, as `GetEnvironmentVariableW` does.
struct MeasuringSystem {
    std::vector<std::wstring> texts;
    std::size_t calls = 0;

    std::optional<std::size_t> operator()(wchar_t* buffer, std::size_t size) {
        const auto& text = texts[std::min(calls++, texts.size() - 1)];
        if (text.size() >= size) return text.size() + 1;
        std::copy(text.begin(), text.end(), buffer);
        return text.size();
    }
};

std::wstring textOf(std::size_t length) {
    std::wstring text(length, L'x');
    if (length != 0) text.back() = L'!';
    return text;
}

TEST(GrowingBuffer, readsACutTextWhole) {
    // A text that fills the buffer may have been cut.
    const std::pair<std::size_t, std::size_t> cases[] = {{1, 1}, {258, 1}, {259, 2}, {519, 3}, {32767, 8}};
    for (const auto& [length, calls] : cases) {
        CuttingSystem system{textOf(length)};
        EXPECT_EQ(platform::readTruncatedText(std::ref(system)), system.text) << length;
        EXPECT_EQ(system.calls, calls) << length;
    }
    for (const std::size_t answers : {0u, 2u}) {
        std::size_t call = 0;
        const auto failing = [&](wchar_t*, std::size_t size) { return call++ < answers ? size : 0; };
        EXPECT_TRUE(platform::readTruncatedText(failing).empty()) << "a failure at any round";
        EXPECT_EQ(call, answers + 1);
    }
}

TEST(GrowingBuffer, readsAMeasuredTextWhole) {
    const std::pair<std::vector<std::size_t>, std::size_t> cases[] = {
        {{0}, 1}, {{259}, 1}, {{260}, 2}, {{300, 400}, 3}, {{300, 5}, 2}};
    for (const auto& [lengths, calls] : cases) {
        MeasuringSystem system;
        for (const auto length : lengths) system.texts.push_back(textOf(length));
        EXPECT_EQ(platform::readSizedText(std::ref(system)), system.texts.back()) << lengths.back();
        EXPECT_EQ(system.calls, calls) << lengths.back();
    }
    const auto absent = [](wchar_t*, std::size_t) -> std::optional<std::size_t> { return std::nullopt; };
    EXPECT_FALSE(platform::readSizedText(absent).has_value()) << "which is not empty";
}

}  // namespace
