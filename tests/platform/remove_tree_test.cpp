#include "platform/remove_tree.h"
#include <gtest/gtest.h>
#include <support/directory_link.h>
#include <support/plugin_folder.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using platform::EntryKind;

/// A tree of one directory "top" that answers removals as it is told, and notes what it was asked.
class ScriptedTree {
 public:
    std::vector<platform::DirectoryEntry> entries;
    std::map<std::string, std::deque<int>> answers;  // success when there is none left
    std::vector<std::string> calls;

    std::ptrdiff_t count(const std::string& call) const { return std::count(calls.begin(), calls.end(), call); }
    platform::TreeOperations operations() {
        return {[this](const fs::path& path) {
                    calls.push_back("list " + path.generic_string());
                    return entries;
                },
                [this](const fs::path& path) { return answer("file " + path.generic_string()); },
                [this](const fs::path& path) { return answer("directory " + path.generic_string()); }};
    }

 private:
    std::error_code answer(const std::string& call) {
        calls.push_back(call);
        auto& left = answers[call];
        if (left.empty()) return {};
        const int error = left.front();
        left.pop_front();
        return {error, std::system_category()};
    }
};

using Calls = std::vector<std::string>;

TEST(RemoveTree, removesEachKindOfEntryInItsOwnWay) {
    ScriptedTree tree;
    tree.entries = {{"top/f", EntryKind::file},
                    {"top/d", EntryKind::directory},
                    {"top/fl", EntryKind::fileLink},
                    {"top/dl", EntryKind::directoryLink}};
    EXPECT_FALSE(removeTree("top", tree.operations()));
    EXPECT_EQ(tree.calls, Calls{"directory top"}) << "only what is not empty is walked";
    tree.calls.clear();
    tree.answers["directory top"] = {145};
    EXPECT_FALSE(removeTree("top", tree.operations()));
    EXPECT_EQ(tree.calls, (Calls{"directory top", "list top", "file top/f", "directory top/d", "file top/fl",
                                 "directory top/dl", "directory top"}));
}

TEST(RemoveTree, whatCannotBeRemovedCostsItselfAndIsNeverEntered) {
    ScriptedTree tree;
    tree.entries = {{"top/kept", EntryKind::file}, {"top/dl", EntryKind::directoryLink}, {"top/f", EntryKind::file}};
    tree.answers["directory top"] = tree.answers["directory top/dl"] = std::deque<int>(20, 145);
    tree.answers["file top/kept"] = std::deque<int>(20, 5);
    EXPECT_TRUE(removeTree("top", tree.operations()));
    EXPECT_EQ(tree.count("file top/f"), 10);
    EXPECT_EQ(tree.count("list top/dl"), 0);
}

TEST(RemoveTree, repeatsPassesThatMaySucceedLater) {
    const struct {
        std::deque<int> answers;
        int error;
        std::ptrdiff_t passes;
    } cases[] = {
        {{5, 5}, 0, 3},   {std::deque<int>(9, 5), 0, 10}, {std::deque<int>(20, 5), 5, 10},
        {{5, 32}, 32, 2},  // another error ends the deletion
        {{2}, 0, 1},       // somebody else was quicker,
        {{3}, 0, 1},       // and removed the folder as well
    };
    for (const auto& [answers, error, passes] : cases) {
        ScriptedTree tree;
        tree.entries = {{"top/f", EntryKind::file}};
        tree.answers["file top/f"] = answers;
        // Each pass begins with "not empty" and, when its file went, ends with success.
        for (std::size_t pass = 0; pass < 20; ++pass) {
            tree.answers["directory top"].push_back(145);
            const bool fileGoes = pass >= answers.size() || answers[pass] < 5;
            if (fileGoes) tree.answers["directory top"].push_back(0);
        }
        EXPECT_EQ(removeTree("top", tree.operations()).value(), error);
        EXPECT_EQ(tree.count("list top"), passes);
    }
}

TEST(RemoveTree, survivesOperationsThatThrow) {
    ScriptedTree tree;
    auto operations = tree.operations();
    operations.removeDirectory = [](const fs::path&) -> std::error_code { throw std::bad_alloc(); };
    EXPECT_TRUE(removeTree("top", operations));
}

class RemoveTreeOnDisk : public testing::Test {
 protected:
    test_support::PluginFolder folder_;
    fs::path tree_ = folder_.path() / "tree";
};

TEST_F(RemoveTreeOnDisk, removesNestedNonAsciiAndReadOnlyFiles) {
    folder_.writeFile("tree/a.txt", "a");
    folder_.writeFile(fs::path("tree") / u8"Größe 日本" / u8"Ω.prt", "b");
    fs::permissions(folder_.writeFile("tree/deep/er/c.txt", "c"), fs::perms::owner_read);
    EXPECT_FALSE(platform::removeTree(tree_));
    EXPECT_FALSE(fs::exists(tree_));
    EXPECT_FALSE(platform::removeTree(tree_)) << "it is gone already";
    EXPECT_FALSE(platform::removeTree(tree_ / "below"));
}

TEST_F(RemoveTreeOnDisk, removesPathsOverTheOldLimit) {
#ifdef _WIN32
    const fs::path prefix = L"\\\\?\\";
#else
    const fs::path prefix;
#endif
    auto deep = fs::path(prefix.native() + tree_.native());
    fs::create_directory(deep);
    for (int level = 0; level < 8; ++level) {
        deep = fs::path(deep.native() + fs::path::preferred_separator + fs::path(std::string(50, 'd')).native());
        fs::create_directory(deep);
    }
    ASSERT_GT(deep.native().size(), 400u);
    std::ofstream(fs::path(deep.native() + fs::path::preferred_separator + fs::path("f").native())) << "x";
    EXPECT_FALSE(platform::removeTree(tree_));
    EXPECT_FALSE(fs::exists(tree_));
}

// A link that is there, and one that another program puts in place of a folder just before or after it is listed.
TEST_F(RemoveTreeOnDisk, leavesWhatLinksLeadTo) {
    const auto plantLink = [this] {
        fs::rename(tree_ / "sub", folder_.path() / ("aside" + std::to_string(std::rand())));
        return std::make_unique<test_support::DirectoryLink>(tree_ / "sub", folder_.path() / "outside");
    };
    enum Moment { before, atListing, afterListing };
    for (const auto moment : {before, atListing, afterListing}) {
        const auto outside = folder_.writeFile("outside/deep/precious.prt", "x");
        const auto beside = folder_.writeFile("outside/beside.prt", "x");
        for (const char* name : {"deep/precious.prt", "beside.prt"}) folder_.writeFile(tree_ / "sub" / name, "y");
        auto link = moment == before ? plantLink() : nullptr;
        auto operations = platform::systemTreeOperations(tree_);
        operations.list = [&, list = operations.list](const fs::path& path) {
            auto entries = list(path);
            if (link || path.filename() != "sub") return entries;
            link = plantLink();
            return moment == atListing ? list(path) : entries;
        };
        removeTree(tree_, operations);
        ASSERT_TRUE(link);
        EXPECT_EQ(test_support::readFile(outside), "x");
        EXPECT_EQ(test_support::readFile(beside), "x");
#ifndef _WIN32  // what stands in for Windows in the cross build cannot remove such a link
        EXPECT_FALSE(fs::exists(fs::symlink_status(tree_)));
#endif
    }
}

TEST_F(RemoveTreeOnDisk, aFileIsNoTree) {
    const auto file = folder_.writeFile("precious.prt", "x");
    EXPECT_TRUE(platform::removeTree(file));
    EXPECT_EQ(test_support::readFile(file), "x");
}

}  // namespace
