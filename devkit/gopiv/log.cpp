#include "log.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "text.h"

namespace gopiv {
namespace {

constexpr std::array<const char*, 4> levelNames{"debug", "info", "warning", "error"};
constexpr std::array<const char*, 4> levelHeads{"DEBUG", "INFO", "WARNING", "ERROR"};

std::string oneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
    return text;
}

}  // namespace

LogLevel logLevelFrom(const std::string& name) {
    const auto found = std::find(levelNames.begin(), levelNames.end(), name);
    return found == levelNames.end() ? LogLevel::info : static_cast<LogLevel>(found - levelNames.begin());
}

void Log::openFile(const std::filesystem::path& file, LogLevel level) {
    const std::lock_guard lock(mutex_);
    file_ = file;
    fileLevel_ = level;
}

void Log::setSink(gopiv_log_function sink, void* context) {
    const std::lock_guard lock(mutex_);
    sink_ = sink;
    context_ = context;
}

void Log::write(LogLevel level, const std::string& text) {
    writeFile(level, text);
    std::unique_lock lock(mutex_);
    const auto sink = sink_;
    auto* const context = context_;
    lock.unlock();
    if (sink != nullptr) {
        sink(context, levelNames[static_cast<std::size_t>(level)], oneLine(text).c_str());
    }
}

void Log::writeFile(LogLevel level, const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (!file_.empty() && level >= fileLevel_) {
        std::ofstream(file_, std::ios::binary | std::ios::app)
            << utcNow() << " [" << levelHeads[static_cast<std::size_t>(level)] << "] " << oneLine(text) << '\n';
    }
}

}  // namespace gopiv
