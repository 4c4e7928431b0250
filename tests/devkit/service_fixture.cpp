#include "service_fixture.h"

#include <platform/text_encoding.h>

#include <sstream>

namespace devkit_test {

namespace fs = std::filesystem;

std::string serviceLibrary() {
    return platform::fileSystemTextFromPath(fs::absolute(platform::pathFromUtf8(GOPIV_LIBRARY)).make_preferred());
}

std::string RecordingLogger::all() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

void RecordingLogger::add(const std::string& line) {
    const std::lock_guard lock(mutex_);
    lines_ += line + "\n";
}

ServiceTest::ServiceTest() : data(folder.path() / platform::pathFromUtf8("service d'\xC3\xA9t\xC3\xA9 100% & co")) {}

void ServiceTest::describe(const std::string& text) const {
    folder.writeFile(data.filename() / "service.json", text);
}

cpp_piv::CppPivInitializeOptions ServiceTest::options() const {
    cpp_piv::CppPivInitializeOptions options;
    options.environment = {
        {"LoginURL", "https://login.example.com/"},
        {"ServerURL", "http://127.0.0.1:0/?data=" + devkit::percentEncode(platform::utf8FromPath(data))},
        {"ClientID", "0123456789abcdef0123456789abcdef"},
        {"Audience", "https://audience.example.com/api/v2/"}};
    options.clientVersions = {{"devkit-test", "1.0.0"}};
    return options;
}

std::shared_ptr<cpp_piv::CppPivClient> ServiceTest::newClient(const cpp_piv::CppPivInitializeOptions& options,
                                                              std::shared_ptr<cpp_piv::ICppPivLogger> logger) {
    auto client = std::make_shared<cpp_piv::CppPivClient>(
        std::make_shared<cpp_piv::DynamicCppPivBridge>(serviceLibrary()), std::move(logger));
    client->initialize(options);
    return client;
}

std::string ServiceTest::signIn(cpp_piv::CppPivClient& client) {
    devkit::answerSignIn(client.localAuthFlowAuthorize(), true);
    return client.localAuthFlowComplete().accessToken;
}

cpp_piv::CppPivUploadPayload ServiceTest::payload(std::vector<cpp_piv::CppPivUploadFile> files) {
    cpp_piv::CppPivUploadPayload payload;
    payload.workspaceDirectories = {{1, 1001}};
    payload.fileName = "bolt.prt";
    payload.revision = "A";
    payload.lastModified = "2024-05-06T07:08:09Z";
    payload.sourceVersion = "1";
    payload.sourceRevision = "A";
    payload.files = std::move(files);
    return payload;
}

cpp_piv::CppPivUploadFile ServiceTest::localFile(const std::string& name, const std::string& content,
                                                 const std::string& fileId) const {
    const fs::path place = fs::path("local") / devkit::percentEncode(fileId) / platform::pathFromUtf8(name);
    const fs::path file = folder.writeFile(place, content);
    return {platform::utf8FromPath(file), name, fileId, "A"};
}

nlohmann::json ServiceTest::stored(const fs::path& name) const {
    return nlohmann::json::parse(test_support::readFile(data / name));
}

std::string originOf(const std::string& address) {
    return address.substr(0, address.find('/', std::string("http://").size()));
}

}  // namespace devkit_test
