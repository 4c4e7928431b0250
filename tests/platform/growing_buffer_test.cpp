#include <gtest/gtest.h>
#include <platform/growing_buffer.h>

#include <algorithm>
#include <vector>

namespace {

/// A system that holds `text` and cuts it to the room there is, as `GetModuleFileNameW` does.
struct CuttingSystem {
    std::wstring text;
    std::vector<std::size_t> rooms;

    std::size_t operator()(wchar_t* buffer, std::size_t size) {
        rooms.push_back(size);
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
    const struct {
        std::size_t length;
        std::vector<std::size_t> rooms;
    } cases[] = {{1, {260}},
                 {258, {260}},
                 {259, {260, 520}},  // fills the buffer, so it may have been cut
                 {260, {260, 520}},
                 {519, {260, 520, 1040}},
                 {32767, {260, 520, 1040, 2080, 4160, 8320, 16640, 33280}}};
    for (const auto& [length, rooms] : cases) {
        CuttingSystem system{textOf(length), {}};
        EXPECT_EQ(platform::readCuttingCall(std::ref(system)), system.text) << length;
        EXPECT_EQ(system.rooms, rooms) << length;
    }
}

TEST(GrowingBuffer, failureAtAnyRoundGivesNoText) {
    for (const std::size_t answers : {0u, 2u}) {
        std::size_t call = 0;
        const auto text =
            platform::readCuttingCall([&](wchar_t*, std::size_t size) { return call++ < answers ? size : 0; });
        EXPECT_TRUE(text.empty());
        EXPECT_EQ(call, answers + 1);
    }
}

TEST(GrowingBuffer, readsAMeasuredTextWhole) {
    const struct {
        std::vector<std::size_t> lengths;
        std::size_t calls;
    } cases[] = {{{0}, 1}, {{259}, 1}, {{260}, 2}, {{32767}, 2}, {{300, 400}, 3}, {{300, 5}, 2}};
    for (const auto& [lengths, calls] : cases) {
        MeasuringSystem system;
        for (const auto length : lengths) system.texts.push_back(textOf(length));
        EXPECT_EQ(platform::readMeasuringCall(std::ref(system)), system.texts.back()) << lengths.back();
        EXPECT_EQ(system.calls, calls) << lengths.back();
    }
}

TEST(GrowingBuffer, absentIsNotEmpty) {
    const auto absent = [](wchar_t*, std::size_t) -> std::optional<std::size_t> { return std::nullopt; };
    EXPECT_FALSE(platform::readMeasuringCall(absent).has_value());
}

}  // namespace
