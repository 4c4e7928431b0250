#include <platform/text_encoding.h>

#include <future>
#include <set>

#include "service_fixture.h"

namespace {

using devkit::httpGet;
using devkit_test::failureOf;
using nlohmann::json;
using test_support::readFile;

using UploadTest = devkit_test::ServiceTest;

std::string everyByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST_F(UploadTest, StoresEachFileByteForByte) {
    const auto client = newClient();
    const std::string token = signIn(*client);
    ASSERT_EQ(client->getRootDirectory(token, 1).id, 1001);
    const std::string large(200'000, 'x');
    const auto result = client->upload(token,
                                       payload({localFile("bolt.prt", everyByte(), "id-1"),
                                                localFile("\xC3\xA9\xE6\x97\xA5 & (1).prt", large, "<id-2>"),
                                                localFile("bolt.prt", "another bolt", "id-3"),
                                                localFile("revision.json", "not the description", "id-4"),
                                                {"", "nothing to send", "id-5", "A"}}),
                                       false);
    EXPECT_TRUE(result.errors.empty());
    ASSERT_EQ(result.entries.at("revisionId"), "1001");

    const std::filesystem::path revision = data / "revisions" / "1001";
    EXPECT_EQ(readFile(revision / "bolt.prt"), everyByte());
    EXPECT_EQ(readFile(revision / platform::pathFromUtf8("\xC3\xA9\xE6\x97\xA5 & (1).prt")), large);
    EXPECT_EQ(readFile(revision / "2" / "bolt.prt"), "another bolt");
    EXPECT_EQ(readFile(revision / "2" / "revision.json"), "not the description");
    const json description = stored("revisions/1001/revision.json");
    EXPECT_EQ(description["files"].size(), 4U);
    EXPECT_EQ(description["files"][2]["storedAs"], "2/bolt.prt");
    EXPECT_EQ(stored("index.json")["revisions"], json::array({description}));
    EXPECT_EQ(description["createdAt"].get<std::string>().size(), 20U);

    const json line = stored("uploads.jsonl");
    EXPECT_EQ(line["files"][0], (json{{"name", "bolt.prt"},
                                      {"fileId", "id-1"},
                                      {"revision", "A"},
                                      {"size", 256},
                                      {"sha256", "40aff2e9d2d8922e47afd4648e6967497158785fbd1da870e7110266bf944880"}}));
    EXPECT_EQ(line["workspaceId"], 1);
    EXPECT_EQ(line["directoryId"], 1001);
    EXPECT_EQ(line["lastModified"], "2024-05-06T07:08:09Z");
    EXPECT_FALSE(line.contains("createdAt"));

    const auto page = httpGet(result.entries.at("url"));
    EXPECT_EQ(page.status, 200);
    EXPECT_NE(
        page.body.find("<th scope=\"row\">\xC3\xA9\xE6\x97\xA5 &amp; (1).prt</th><td class=\"number\">200,000</td>"
                       "<td>A</td><td><code>&lt;id-2&gt;</code></td>"),
        std::string::npos)
        << page.body;
    const std::string origin = devkit_test::originOf(result.entries.at("url"));
    EXPECT_NE(httpGet(origin + "/").body.find("/models?revisionId=1001"), std::string::npos);
    EXPECT_EQ(httpGet(origin + "/models?revisionId=1002").status, 404);
}

TEST_F(UploadTest, DigestsAreSha256) {
    const std::vector<std::pair<std::string, std::string>> digests = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {std::string(1'000'000, 'a'), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}};
    const auto client = newClient();
    std::vector<cpp_piv::CppPivUploadFile> files;
    for (const auto& [content, digest] : digests) {
        files.push_back(localFile(digest + ".prt", content));
    }
    client->upload(signIn(*client), payload(files), false);
    const json revision = stored("revisions/1001/revision.json");
    EXPECT_EQ(revision["files"].size(), digests.size());
    for (const json& file : revision["files"]) {
        EXPECT_EQ(file["name"], file["sha256"].get<std::string>() + ".prt");
    }
}

TEST_F(UploadTest, RefusedOnesLeaveNoRevision) {
    const auto client = newClient();
    const std::string token = signIn(*client);
    const auto good = localFile("bolt.prt", "bytes");
    const auto failure = [&](const cpp_piv::CppPivUploadPayload& asked) {
        return failureOf([&] { client->upload(token, asked, false); });
    };
    auto elsewhere = payload({good});
    elsewhere.workspaceDirectories = {{1, 5}};
    EXPECT_EQ(failure(elsewhere), "Workspace 1 has no directory 5.");
    elsewhere.workspaceDirectories = {{8, 1008}};
    EXPECT_EQ(failure(elsewhere), "There is no workspace 8.");
    elsewhere.workspaceDirectories = {};
    EXPECT_EQ(failure(elsewhere), "An upload must name exactly one workspace.");
    EXPECT_EQ(failure(payload({{"", "bolt.prt", "id", "A"}})), "The upload has no files.");
    EXPECT_EQ(failure(payload({good, {"missing.prt", "missing.prt", "id", "A"}})),
              "The file missing.prt cannot be read.");
    for (const char* name : {"..", "../bolt.prt", "a\\b.prt", "C:bolt.prt", "a\nb.prt"}) {
        EXPECT_EQ(failure(payload({{good.path, name, "id", "A"}})),
                  "\"" + std::string(name) + "\" is no name for an uploaded file.");
    }
    EXPECT_EQ(failureOf([&] { client->upload("made up", payload({good}), false); }), "The access token is not valid.");
    EXPECT_EQ(stored("index.json")["revisions"], json::array());
    EXPECT_FALSE(std::filesystem::exists(data / "uploads.jsonl"));
}

TEST_F(UploadTest, LookupsMeanTheLatestRevisionOfAFile) {
    describe(R"({"workspaces": [{"id": 1, "name": "One"}, {"id": 2, "name": "Two", "rootDirectoryId": 22}],
                 "revisions": [{"workspaceId": 1, "fileId": "old", "fileName": "old.prt", "revision": "7"}]})");
    const auto client = newClient();
    const std::string token = signIn(*client);
    auto upload = payload({localFile("bolt.prt", "1", "bolt"), localFile("nut.prt", "2", "nut")});
    client->upload(token, upload, false);
    upload.files[0].revision = "B";
    upload.files.pop_back();
    client->upload(token, upload, false);

    const auto count = [&](std::int64_t workspace, const std::string& fileId, const std::string& revision,
                           bool latest) {
        return client->findRevision(token, workspace, fileId, "1", revision, "", false, latest, false, true).size();
    };
    EXPECT_EQ(count(1, "bolt", "B", true), 1U);
    EXPECT_EQ(count(1, "bolt", "A", true), 0U);
    EXPECT_EQ(count(1, "bolt", "A", false), 1U);
    EXPECT_EQ(count(1, "nut", "A", true), 1U);
    EXPECT_EQ(count(1, "old", "7", true), 1U);
    EXPECT_EQ(count(2, "bolt", "B", true), 0U);
    EXPECT_EQ(client->findRevision(token, 1, "bolt", "1", "B", "", false, true, false, true)[0].revisionId, 1002);
    EXPECT_EQ(client->getRootDirectory(token, 2).id, 22);
    EXPECT_EQ(client->listWorkspaces(token, "tw").size(), 1U);
}

TEST_F(UploadTest, ClientsThatShareAFolderLoseNoRevision) {
    constexpr int clients = 3;
    constexpr int uploads = 8;
    const auto file = localFile("bolt.prt", everyByte());
    std::vector<std::future<void>> workers;
    for (int i = 0; i < clients; ++i) {
        workers.push_back(std::async(std::launch::async, [&] {
            const auto client = newClient();
            const std::string token = signIn(*client);
            for (int n = 0; n < uploads; ++n) {
                client->upload(token, payload({file}), false);
            }
        }));
    }
    for (auto& worker : workers) {
        worker.get();
    }
    std::set<json> ids;
    const json index = stored("index.json");
    for (const json& revision : index["revisions"]) {
        ids.insert(revision["revisionId"]);
    }
    EXPECT_EQ(ids.size(), static_cast<std::size_t>(clients * uploads));
    const std::string lines = readFile(data / "uploads.jsonl");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), clients * uploads);
}

}  // namespace
