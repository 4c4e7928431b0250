#include "scripted_sign_in.h"

#include <service/upload_execution.h>

#include <gmock/gmock.h>
#include <functional>
#include <stdexcept>

using namespace pivra;
using cpp_piv::CppPivUploadPayload;
using cpp_piv::CppPivUploadResult;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

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

TEST(FilesToSend, AreTheCollectedOnes) {
    ModelMetadata metadata;
    metadata.exportedFile = "tmp/gearbox.prt";
    metadata.sourceFileId = "ROOT";
    metadata.fileName = "gearbox.prt";
    metadata.isAssembly = metadata.isPartFamily = true;
    metadata.files = {entry("tmp/gearbox.prt", "gearbox.prt", "ROOT"), entry("", "shaft.prt", "SHAFT")};
    EXPECT_THAT(described(filesToSend(metadata)),
                ElementsAre("tmp/gearbox.prt|gearbox.prt|ROOT_gearbox|R-ROOT", "|shaft.prt|SHAFT|R-SHAFT"));
}

TEST(FilesToSend, IsTheExportedFileUnderItsOwnNameWhenNoneWereCollected) {
    ModelMetadata metadata;
    metadata.exportedFile = "C:\\tmp/pivra-1\\A_B.pdf";
    metadata.uploadFileName = metadata.fileName = "bracket.prt";
    metadata.sourceFileId = "ABC";
    metadata.revision = "C";
    EXPECT_THAT(described(filesToSend(metadata)), ElementsAre("C:\\tmp/pivra-1\\A_B.pdf|A_B.pdf|ABC|C"));
    metadata.isAssembly = true;
    EXPECT_THAT(filesToSend(metadata), IsEmpty());
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

TEST_F(UploadExecution, SendsTheModelIntoTheRootDirectory) {
    metadata.uploadFileName = "bracket.prt";
    metadata.revision = "B";
    metadata.lastModifiedUtc = "2024-05-06T07:08:09Z";
    response.entries = {{"revision", "12"}};
    const auto result = upload();
    EXPECT_TRUE(result.attempted);
    EXPECT_TRUE(result.succeeded);
    EXPECT_EQ(result.workspaceId, 7);
    EXPECT_EQ(result.rootDirectory, 70);
    EXPECT_THAT(result.responseEntries, ElementsAre(Pair("revision", "12")));
    EXPECT_EQ(result.message, "");
    EXPECT_THAT(calls, ElementsAre("root token 7", "upload token"));

    EXPECT_THAT(sent.workspaceDirectories, ElementsAre(Pair(7, 70)));
    EXPECT_THAT(sent.workspaceRevisions, IsEmpty());
    EXPECT_EQ(sent.fileName, "bracket.prt");
    EXPECT_EQ(sent.revision, "B");
    EXPECT_EQ(sent.lastModified, "2024-05-06T07:08:09Z");
    EXPECT_EQ(sent.sourceVersion, "1");
    EXPECT_EQ(sent.sourceRevision, "B");
    EXPECT_FALSE(sent.description || sent.contentType || sent.comment);
    EXPECT_THAT(described(sent.files), ElementsAre("tmp/bracket.pdf|bracket.pdf||B"));
}

TEST_F(UploadExecution, LeavesOutWhatIsNotKnown) {
    EXPECT_TRUE(upload().succeeded);
    EXPECT_FALSE(sent.fileName || sent.revision || sent.lastModified || sent.sourceVersion || sent.sourceRevision);
}

TEST_F(UploadExecution, NamesTheUpload) {
    struct Row {
        std::optional<std::string> uploadFileName;
        bool isAssembly;
        const char *entryName, *exportedFile, *fileName;
        std::optional<std::string> sent;
    };
    const Row rows[] = {
        {"given", true, "entry", "x/export", "shown", "given"},
        {"", false, "entry", "x/export", "shown", std::nullopt},
        {std::nullopt, false, "entry", "x/export", "shown", std::nullopt},
        {"", true, "entry", "x/export", "shown", "entry"},
        {std::nullopt, true, "", "", "shown", "shown"},
        {std::nullopt, true, "", "", "", std::nullopt},
        {std::nullopt, true, "", "C:\\x\\export", "shown", "export"},
        {std::nullopt, true, "", "C:\\x/export", "", "export"},
        {std::nullopt, true, "", "export", "", "export"},
    };
    for (const Row& row : rows) {
        metadata.uploadFileName = row.uploadFileName;
        metadata.isAssembly = row.isAssembly;
        metadata.exportedFile = row.exportedFile;
        metadata.fileName = row.fileName;
        metadata.files = {entry("x/file", row.entryName, "ID")};
        EXPECT_TRUE(upload().succeeded);
        EXPECT_EQ(sent.fileName, row.sent);
    }
}

TEST_F(UploadExecution, TheFirstObstacleDecidesTheMessage) {
    const std::string logHint =
        " If NX logging is enabled, check pivra-integration.log in the configured NX log "
        "directory for export details. Then try the upload again.";
    const auto working = callbacks;
    metadata.traceabilityError = "untraceable";
    metadata.uploadBlockedReason = "blocked";
    metadata.exportedFile.clear();
    metadata.isAssembly = true;
    metadata.files = {entry("", "root.prt", "ROOT"), entry("", "member.prt", "MEMBER")};
    session.signOut({}, {});
    callbacks.upload = nullptr;

    const auto missing = upload(8);
    EXPECT_FALSE(missing.attempted);
    EXPECT_EQ(missing.message,
              "The selected Pivra workspace was not found in the workspace list loaded by NX. Refresh the Pivra dialog "
              "and select the workspace again.");

    const auto expectMessage = [this](const std::string& message) {
        const auto result = upload();
        EXPECT_TRUE(result.attempted);
        EXPECT_FALSE(result.succeeded);
        EXPECT_EQ(result.workspaceId, 7);
        EXPECT_EQ(result.message, message);
    };
    expectMessage("untraceable");
    metadata.traceabilityError.clear();
    expectMessage("blocked");
    metadata.uploadBlockedReason.clear();
    expectMessage(
        "No exported NX assembly files are available for upload. The NX export step did not produce local "
        "files for the assembly root or members." +
        logHint);
    metadata.isAssembly = false;
    const std::string noFile =
        "No exported NX file is available for upload. The NX export step did not produce a local "
        ".prt, or .pdf file." +
        logHint;
    expectMessage(noFile);
    metadata.files.clear();
    expectMessage(noFile);
    metadata.exportedFile = "tmp/bracket.pdf";
    expectMessage("No Pivra auth token is available for upload. Sign out, sign in again, and retry the upload.");
    test_support::ScriptedSignIn().signIn(session);
    const std::string notConfigured =
        "The Pivra upload client is not fully configured. NX could not create the root-directory or upload operation "
        "needed to send the exported files.";
    expectMessage(notConfigured);
    callbacks = working;
    callbacks.rootDirectory = nullptr;
    expectMessage(notConfigured);
    EXPECT_THAT(calls, IsEmpty());
    callbacks = working;
    EXPECT_TRUE(upload().succeeded);
}

TEST_F(UploadExecution, TheServicesFirstErrorIsTheMessage) {
    response.entries = {{"revision", "12"}};
    response.errors = {"quota", "other"};
    const auto result = upload();
    EXPECT_FALSE(result.succeeded);
    EXPECT_EQ(result.message, "quota");
    EXPECT_THAT(result.errors, ElementsAre("quota", "other"));
    EXPECT_THAT(result.responseEntries, ElementsAre(Pair("revision", "12")));
}

TEST_F(UploadExecution, AFailureOfTheServiceEndsInAMessage) {
    const std::string withoutDetails =
        "Upload failed before Pivra returned details. If NX logging is enabled, check pivra-integration.log in the "
        "configured NX log directory for the preceding export and upload events. Then try again.";
    const std::pair<std::function<void()>, std::string> rows[] = {
        {[] { throw std::runtime_error("connection lost"); }, "connection lost"}, {[] { throw 1; }, withoutDetails}};
    for (const auto& [fail, message] : rows) {
        callbacks.upload = [&fail = fail](auto&&...) -> CppPivUploadResult { return fail(), CppPivUploadResult(); };
        const auto refused = upload();
        EXPECT_FALSE(refused.succeeded);
        EXPECT_EQ(refused.rootDirectory, 70);
        EXPECT_EQ(refused.message, message);
    }
    calls.clear();
    callbacks.rootDirectory = [](auto&&...) -> cpp_piv::CppPivDirectory { throw std::runtime_error("no directory"); };
    EXPECT_EQ(upload().message, "no directory");
    EXPECT_THAT(calls, IsEmpty());
}

}  // namespace
