// A folder with an embedded service, and clients that reach it as the plug-in does.
#pragma once

#include <cpp_piv/client.h>
#include <cpp_piv/initialize_options.h>
#include <gtest/gtest.h>
#include <http_client.h>
#include <support/plugin_folder.h>

#include <filesystem>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace devkit_test {

/// Full name of the native service library under test, as its bridge takes it.
std::string serviceLibrary();

/// What the client library logged: "level: text".
class RecordingLogger : public cpp_piv::ICppPivLogger {
 public:
    void debug(const std::string& text) override { add("debug: " + text); }
    void info(const std::string& text) override { add("info: " + text); }
    void warning(const std::string& text) override { add("warning: " + text); }
    void error(const std::string& text) override { add("error: " + text); }
    std::string all() const;

 private:
    void add(const std::string& line);

    mutable std::mutex mutex_;
    std::string lines_;
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

class ServiceTest : public testing::Test {
 protected:
    ServiceTest();

    /// Writes service.json.
    void describe(const std::string& text) const;

    cpp_piv::CppPivInitializeOptions options() const;
    static std::shared_ptr<cpp_piv::CppPivClient> newClient(const cpp_piv::CppPivInitializeOptions& options,
                                                            std::shared_ptr<cpp_piv::ICppPivLogger> logger = nullptr);
    std::shared_ptr<cpp_piv::CppPivClient> newClient() const { return newClient(options()); }

    /// Signs in through the page and returns the access token.
    static std::string signIn(cpp_piv::CppPivClient& client);

    /// The payload for files into workspace 1 of the sample service.
    static cpp_piv::CppPivUploadPayload payload(std::vector<cpp_piv::CppPivUploadFile> files);
    /// Writes a local file and returns its entry for an upload.
    cpp_piv::CppPivUploadFile localFile(const std::string& name, const std::string& content,
                                        const std::string& fileId = "file-1") const;

    nlohmann::json stored(const std::filesystem::path& name) const;

    test_support::PluginFolder folder;
    std::filesystem::path data;  ///< the service's folder, not yet made
};

/// "http://127.0.0.1:<port>" of an address of the service.
std::string originOf(const std::string& address);

}  // namespace devkit_test
