// A folder with an embedded service, and clients that reach it as the plug-in does.
#pragma once

#include <cpp_piv/client.h>
#include <cpp_piv/initialize_options.h>
#include <gtest/gtest.h>
#include <http_client.h>
#include <support/plugin_folder.h>
#include "platform/text_encoding.h"

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace devkit_test {

/// What the client library logged, on one thread: "level: text".
struct RecordingLogger : cpp_piv::ICppPivLogger {
    void debug(const std::string& text) override { lines += "debug: " + text + "\n"; }
    void info(const std::string& text) override { lines += "info: " + text + "\n"; }
    void warning(const std::string& text) override { lines += "warning: " + text + "\n"; }
    void error(const std::string& text) override { lines += "error: " + text + "\n"; }

    std::string lines;
};

/// The message of the std::exception that `action` throws; "nothing" and "unknown" when it throws none or another.
template <class Action>
std::string failureOf(const Action& action) {
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    } catch (const cpp_piv::UnknownFailure&) {
        return "unknown";
    }
    return "nothing";
}

/// "http://127.0.0.1:<port>" of an address of the service.
inline std::string originOf(const std::string& address) {
    return address.substr(0, address.find('/', std::string("http://").size()));
}

class ServiceTest : public testing::Test {
 protected:
    /// Writes service.json.
    void describe(const std::string& text) const { folder.writeFile(data.filename() / "service.json", text); }

    cpp_piv::CppPivInitializeOptions options() const {
        cpp_piv::CppPivInitializeOptions options;
        options.environment = {
            {"ServerURL", "http://127.0.0.1:0/?data=" + devkit::percentEncode(platform::utf8FromPath(data))},
            {"ClientID", "0123456789abcdef0123456789abcdef"}};
        return options;
    }

    static std::shared_ptr<cpp_piv::CppPivClient> newClient(const cpp_piv::CppPivInitializeOptions& options,
                                                            std::shared_ptr<cpp_piv::ICppPivLogger> logger = nullptr) {
        const auto library = std::filesystem::absolute(platform::pathFromUtf8(GOPIV_LIBRARY)).make_preferred();
        auto client = std::make_shared<cpp_piv::CppPivClient>(
            std::make_shared<cpp_piv::DynamicCppPivBridge>(platform::fileSystemTextFromPath(library)), logger);
        client->initialize(options);
        return client;
    }
    std::shared_ptr<cpp_piv::CppPivClient> newClient() const { return newClient(options()); }

    /// Signs in through the page and returns the access token.
    static std::string signIn(cpp_piv::CppPivClient& client) {
        devkit::answerSignIn(client.localAuthFlowAuthorize(), true);
        return client.localAuthFlowComplete().accessToken;
    }

    /// The payload for files into workspace 1 of the sample service.
    static cpp_piv::CppPivUploadPayload payload(std::vector<cpp_piv::CppPivUploadFile> files) {
        cpp_piv::CppPivUploadPayload payload;
        payload.workspaceDirectories = {{1, 1001}};
        payload.lastModified = "2024-05-06T07:08:09Z";
        payload.files = std::move(files);
        return payload;
    }

    /// Writes a local file and returns its entry for an upload.
    cpp_piv::CppPivUploadFile localFile(const std::string& name, const std::string& content,
                                        const std::string& fileId = "file-1") const {
        const auto place = std::filesystem::path("local") / fileId / platform::pathFromUtf8(name);
        return {platform::utf8FromPath(folder.writeFile(place, content)), name, fileId, "A"};
    }

    /// The stored file's bytes, and the same as JSON.
    std::string stored(const std::filesystem::path& name) const { return test_support::readFile(data / name); }
    nlohmann::json storedJson(const std::filesystem::path& name) const { return nlohmann::json::parse(stored(name)); }

    test_support::PluginFolder folder;
    /// The service's folder, not yet made.
    std::filesystem::path data = folder.path() / platform::pathFromUtf8("service d'\xC3\xA9t\xC3\xA9 100% & co");
};

}  // namespace devkit_test
