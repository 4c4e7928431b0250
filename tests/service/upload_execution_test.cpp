#include "scripted_sign_in.h"

#include "service/upload_execution.h"

#include <gmock/gmock.h>
#include <functional>
#include <stdexcept>

using namespace pivra;
using cpp_piv::CppPivUploadPayload;
using cpp_piv::CppPivUploadResult;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

ModelFileEntry entry(const std::string& path, const std::string& name, const std::string& id) {
    return {path, "source/" + name, name, id, "R-" + id};
}

/// "path|name|id|revision" of each file.
std::vector<std::string> described(const std::vector<cpp_piv::CppPivUploadFile>& files) {
    std::vector<std::string> texts;
    for (const auto& file : files) {
        texts.push_back(file.path + "|" + file.fileName + "|" + file.fileId + "|" + file.revision);
    }
    return texts;
}

TEST(FilesToSend, AreTheCollectedOnesOrTheExportedOneUnderItsOwnName) {
    ModelMetadata metadata;
    metadata.exportedFile = "C:\\tmp/pivra-1\\A_B.pdf";
    metadata.uploadFileName = metadata.fileName = "bracket.prt";
    metadata.sourceFileId = "ABC";
    metadata.revision = "C";
    EXPECT_THAT(described(filesToSend(metadata)), ElementsAre("C:\\tmp/pivra-1\\A_B.pdf|A_B.pdf|ABC|C"));
    metadata.isAssembly = metadata.isPartFamily = true;
    EXPECT_THAT(filesToSend(metadata), IsEmpty());
    metadata.files = {entry("tmp/bracket.prt", "bracket.prt", "ABC"), entry("", "shaft.prt", "SHAFT")};
    EXPECT_THAT(described(filesToSend(metadata)),
                ElementsAre("tmp/bracket.prt|bracket.prt|ABC_bracket|R-ABC", "|shaft.prt|SHAFT|R-SHAFT"));
}

struct UploadExecution : testing::Test {
    auth::AuthSession session;
    std::vector<cpp_piv::CppPivWorkspace> workspaces{{}};
    ModelMetadata metadata;
    WorkspaceServiceCallbacks callbacks;
    std::vector<std::string> calls;
    CppPivUploadPayload sent;
    CppPivUploadResult response;

    UploadExecution() {
        test_support::ScriptedSignIn().signIn(session);
        workspaces.front().id = 7;
        metadata.exportedFile = "tmp/bracket.pdf";
        callbacks.rootDirectory = [this](const std::string& token, std::int64_t workspace) {
            calls.push_back("root " + token + " " + std::to_string(workspace));
            return cpp_piv::CppPivDirectory{70, 0, ""};
        };
        callbacks.upload = [this](const std::string& token, const CppPivUploadPayload& payload, bool replace) {
            calls.push_back("upload " + token + (replace ? " replacing" : ""));
            sent = payload;
            return response;
        };
    }
    UploadExecutionResult upload(std::int64_t workspace = 7) {
        return executeUpload(workspace, workspaces, session, metadata, callbacks);
    }
};

TEST_F(UploadExecution, NamesTheUpload) {
    const struct {
        std::optional<std::string> uploadFileName;
        bool isAssembly;
        const char *entryName, *exportedFile, *fileName;
        std::optional<std::string> sent;
    } rows[] = {
        {"given", true, "entry", "x/export", "shown", "given"},
        {"", false, "entry", "x/export", "shown", std::nullopt},
        {"", true, "entry", "x/export", "shown", "entry"},
        {std::nullopt, true, "", "", "shown", "shown"},
        {std::nullopt, true, "", "", "", std::nullopt},
        {std::nullopt, true, "", "C:\\x\\export", "shown", "export"},
    };
    for (const auto& row : rows) {
        metadata.uploadFileName = row.uploadFileName;
        metadata.isAssembly = row.isAssembly;
        metadata.exportedFile = row.exportedFile;
        metadata.fileName = row.fileName;
        metadata.files = {entry("x/file", row.entryName, "ID")};
        EXPECT_TRUE(upload().succeeded);
        EXPECT_EQ(sent.fileName, row.sent);
    }
}

TEST_F(UploadExecution, TheFirstReasonDecidesTheMessage) {
    const auto working = callbacks;
    callbacks = {};
    session.signOut({}, {});
    metadata = {};
    metadata.traceabilityError = "untraceable";
    metadata.uploadBlockedReason = "blocked";
    metadata.isAssembly = true;
    metadata.files = {entry("", "root.prt", "ROOT"), entry("", "member.prt", "MEMBER")};

    const auto missing = upload(8);
    EXPECT_FALSE(missing.attempted);
    EXPECT_EQ(missing.message,
              "The selected Pivra workspace was not found in the workspace list loaded by NX. Refresh the Pivra dialog "
              "and select the workspace again.");
    const std::string notConfigured =
        "The Pivra upload client is not fully configured. NX could not create the root-directory or upload operation "
        "needed to send the exported files.";
    const std::pair<std::string, std::function<void()>> reasons[] = {
        {"untraceable", [&] { metadata.traceabilityError.clear(); }},
        {"blocked", [&] { metadata.uploadBlockedReason.clear(); }},
        {"No exported NX assembly files are available for upload.", [&] { metadata.isAssembly = false; }},
        {"No exported NX file is available for upload.",
         [&] { metadata.files.clear(), metadata.exportedFile = "tmp/bracket.pdf"; }},
        {"No Pivra auth token is available for upload. Sign out, sign in again, and retry the upload.",
         [&] { test_support::ScriptedSignIn().signIn(session); }},
        {notConfigured, [&] { callbacks.upload = working.upload; }},
        {notConfigured, [&] { callbacks = working; }},
    };
    for (const auto& [message, remove] : reasons) {
        const auto result = upload();
        EXPECT_TRUE(result.attempted && !result.succeeded);
        EXPECT_THAT(result.message, testing::StartsWith(message));
        remove();
    }
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(upload().succeeded);
}

TEST_F(UploadExecution, AFailureOfTheServiceEndsInAMessage) {
    response.errors = {"quota", "other"};
    const auto refused = upload();
    EXPECT_FALSE(refused.succeeded);
    EXPECT_EQ(refused.message, "quota");
    EXPECT_THAT(refused.errors, ElementsAre("quota", "other"));

    calls.clear();
    callbacks.rootDirectory = [](auto&&...) -> cpp_piv::CppPivDirectory { throw std::runtime_error("no directory"); };
    EXPECT_EQ(upload().message, "no directory");
    EXPECT_THAT(calls, IsEmpty());
}

}  // namespace
