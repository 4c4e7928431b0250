// Feeds a target without libFuzzer: with each file of its corpus, then with mutations of them.
#include "target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

namespace fs = std::filesystem;

constexpr int mutations = 500;

std::vector<std::string> filesOf(const fs::path& corpus) {
    std::vector<fs::path> files(fs::directory_iterator(corpus), {});
    std::sort(files.begin(), files.end());  // the seed gives the same mutations everywhere
    std::vector<std::string> texts;
    for (const auto& file : files) texts.push_back(test_support::readFile(file));
    return texts;
}

/// Overwrites, erases and inserts some bytes; what is inserted comes from anywhere in the corpus.
std::string mutated(std::string text, const std::vector<std::string>& corpus, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (auto changes = 1 + below(4); changes > 0; --changes) {
        const auto at = below(text.size() + 1);
        const auto& other = corpus[below(corpus.size())];
        text.erase(at, below(3) == 0 ? below(16) : 0);
        text.insert(at, other.substr(below(other.size() + 1), below(3) == 0 ? 0 : below(16)));
        if (at < text.size() && below(3) == 0) text[at] = static_cast<char>(below(256));
    }
    return text;
}

/// The input is kept in a file for whoever looks into a crash.
void checkKept(const fs::path& file, const std::string& input) {
    std::ofstream(file, std::ios::binary) << input;
    check(input);
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) return std::fprintf(stderr, "Usage: %s CORPUS [SEED]\n", arguments[0]), 2;
    const auto corpus = filesOf(arguments[1]);
    require(!corpus.empty(), "there is a corpus");
    const auto seed = count > 2 ? std::stoul(arguments[2]) : 1;
    const auto kept = fs::path(arguments[0]).filename() += ".input";
    std::printf("%zu files and %d mutations with seed %lu; the input at hand is in %s\n", corpus.size(), mutations,
                seed, fs::absolute(kept).c_str());
    std::fflush(stdout);
    std::mt19937 random(static_cast<std::mt19937::result_type>(seed));
    for (const auto& text : corpus) checkKept(kept, text);
    for (int i = 0; i < mutations; ++i) checkKept(kept, mutated(corpus[i % corpus.size()], corpus, random));
}
