// What the dialog makes of workspaces and of their latest revisions is in tests/replays.
#include "scripted_sign_in.h"

#include "service/workspaces.h"

#include <gmock/gmock.h>
#include <stdexcept>
#include <tuple>

using namespace pivra;

namespace {

using Workspaces = std::vector<cpp_piv::CppPivWorkspace>;
using Revisions = std::vector<cpp_piv::CppPivFindRevisionResult>;

TEST(RevisionLookupKey, tellsTheMembersOfAPartFamilyApart) {
    const struct {
        bool isPartFamily;
        const char *sourceFileId, *fileName, *key;
    } rows[] = {
        {true, "ABC", "bolt_m6.prt", "ABC_bolt_m6"},
        {true, "ABC_bolt_m6", "bolt_m6.prt", "ABC_bolt_m6"},
        {true, "bolt", "bolt.v2.prt", "bolt_bolt.v2"},
        {true, "ABC", "", "ABC"},
        {true, "", "bolt_m6.prt", ""},
        {false, "ABC", "bolt_m6.prt", "ABC"},
    };
    for (const auto& row : rows) {
        ModelMetadata metadata;
        metadata.isPartFamily = row.isPartFamily;
        metadata.sourceFileId = row.sourceFileId;
        metadata.fileName = row.fileName;
        EXPECT_EQ(revisionLookupKey(metadata), row.key);
    }
}

struct RevisionLookup : testing::Test {
    auth::AuthSession session;
    Workspaces workspaces{3};
    ModelMetadata metadata;
    WorkspaceServiceCallbacks callbacks;
    int calls = 0;

    RevisionLookup() {
        test_support::ScriptedSignIn().signIn(session);
        workspaces[1].id = workspaces[2].id = 7;
        workspaces[1].name = "first";
        metadata.sourceFileId = "ABC";
        callbacks.findRevision = [this](auto&&...) { return ++calls, Revisions(1); };
    }
};

TEST_F(RevisionLookup, asksForTheFileInTheWorkspace) {
    metadata.revision = "B";
    metadata.isPartFamily = true;
    metadata.fileName = "bolt.prt";
    for (const bool isAssembly : {false, true}) {
        metadata.isAssembly = isAssembly;
        callbacks.findRevision = [&](const auto&... arguments) {
            EXPECT_EQ(std::make_tuple(arguments...),
                      std::make_tuple(std::string("token"), std::int64_t{7}, std::string("ABC_bolt"), std::string("1"),
                                      std::string("B"), std::string(), false, true, isAssembly, true));
            return Revisions(isAssembly ? 1 : 0);
        };
        const auto lookup = lookupRevision(7, workspaces, session, metadata, callbacks);
        EXPECT_TRUE(lookup.lookedUp && lookup.message.empty());
        EXPECT_EQ(lookup.matchesLatest, isAssembly);
        EXPECT_EQ(lookup.lookupKey, "ABC_bolt");
    }
    EXPECT_EQ(findWorkspaceById(workspaces, 7)->name, "first");
}

TEST_F(RevisionLookup, asksNobodyWithoutAWorkspaceATokenOrAService) {
    EXPECT_FALSE(lookupRevision(8, workspaces, session, metadata, callbacks).lookedUp);
    const auto unconfigured = lookupRevision(7, workspaces, session, metadata, {});
    const auto signedOut = lookupRevision(7, workspaces, auth::AuthSession(), metadata, callbacks);
    for (const auto& lookup : {unconfigured, signedOut}) {
        EXPECT_TRUE(lookup.lookedUp && !lookup.matchesLatest && lookup.message.empty());
    }
    EXPECT_EQ(calls, 0);
}

TEST_F(RevisionLookup, aFailureMatchesNothing) {
    callbacks.findRevision = [](auto&&...) -> Revisions { throw 1; };
    const auto lookup = lookupRevision(7, workspaces, session, metadata, callbacks);
    EXPECT_TRUE(lookup.lookedUp && !lookup.matchesLatest);
    EXPECT_EQ(lookup.message, "Revision lookup failed.");
}

}  // namespace
