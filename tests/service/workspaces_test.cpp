#include "scripted_sign_in.h"

#include <service/workspaces.h>

#include <gmock/gmock.h>
#include <stdexcept>
#include <tuple>

using namespace pivra;
using testing::IsEmpty;

namespace {

using Workspaces = std::vector<cpp_piv::CppPivWorkspace>;
using Revisions = std::vector<cpp_piv::CppPivFindRevisionResult>;

cpp_piv::CppPivWorkspace workspace(std::int64_t id, const std::string& name) {
    cpp_piv::CppPivWorkspace result;
    result.id = id;
    result.name = name;
    return result;
}

/// A session signed in with the token "token".
struct SignedIn {
    auth::AuthSession session;
    SignedIn() { test_support::ScriptedSignIn().signIn(session); }
};

TEST(Workspaces, AreLoadedInTheServicesOrder) {
    const SignedIn user;
    WorkspaceServiceCallbacks callbacks;
    callbacks.listWorkspaces = [](const std::string& token, const std::string& filter) {
        EXPECT_EQ(token, "token");
        EXPECT_EQ(filter, "");
        return Workspaces{workspace(2, "b"), workspace(1, "a")};
    };
    const auto loaded = loadWorkspaces(user.session, callbacks);
    EXPECT_TRUE(loaded.succeeded);
    EXPECT_EQ(loaded.message, "");
    ASSERT_EQ(loaded.workspaces.size(), 2u);
    EXPECT_EQ(loaded.workspaces.front().name, "b");

    callbacks.listWorkspaces = [](const auto&, const auto&) { return Workspaces(); };
    EXPECT_TRUE(loadWorkspaces(user.session, callbacks).succeeded);
}

TEST(Workspaces, AFailedLoadSaysWhy) {
    const SignedIn user;
    const auth::AuthSession nobody;
    const WorkspaceServiceCallbacks none;
    WorkspaceServiceCallbacks refusing, mute;
    refusing.listWorkspaces = [](const auto&, const auto&) -> Workspaces { throw std::runtime_error("refused"); };
    mute.listWorkspaces = [](const auto&, const auto&) -> Workspaces { throw 1; };

    const std::tuple<const auth::AuthSession&, const WorkspaceServiceCallbacks&, const char*> rows[] = {
        {nobody, none,
         "No Pivra auth token is available to load workspaces. Sign out, sign in again, and reopen the Pivra dialog."},
        {user.session, none,
         "The Pivra workspace client is not configured. NX could not request the workspace list from Pivra."},
        {user.session, refusing, "refused"},
        {user.session, mute,
         "Workspace fetch failed before Pivra returned details. Sign in again or try reopening the Pivra dialog."},
    };
    for (const auto& [session, callbacks, message] : rows) {
        const auto loaded = loadWorkspaces(session, callbacks);
        EXPECT_FALSE(loaded.succeeded);
        EXPECT_THAT(loaded.workspaces, IsEmpty());
        EXPECT_EQ(loaded.message, message);
    }
}

TEST(Workspaces, TheFirstOfEqualIdentifiersIsFound) {
    const Workspaces workspaces{workspace(1, "a"), workspace(2, "b"), workspace(2, "c")};
    EXPECT_EQ(findWorkspaceById(workspaces, 2)->name, "b");
    EXPECT_FALSE(findWorkspaceById(workspaces, 3));
}

TEST(Workspaces, AnUnnamedOneHasAStandInLabel) {
    EXPECT_EQ(workspaceLabel("Fixtures"), "Fixtures");
    EXPECT_EQ(workspaceLabel(""), "(unnamed workspace)");
}

TEST(RevisionLookupKey, TellsTheMembersOfAPartFamilyApart) {
    struct Row {
        bool isPartFamily;
        const char *sourceFileId, *fileName, *key;
    };
    for (const Row& row : {
             Row{true, "ABC", "bolt_m6.prt", "ABC_bolt_m6"},
             Row{true, "ABC_bolt_m6", "bolt_m6.prt", "ABC_bolt_m6"},
             Row{true, "ABC_bolt_m6", "bolt_m8.prt", "ABC_bolt_m6_bolt_m8"},
             Row{true, "bolt", "bolt.prt", "bolt_bolt"},
             Row{true, "ABC", "bolt.m6.prt", "ABC_bolt.m6"},
             Row{true, "ABC", "Schraube Ø6.prt", "ABC_Schraube Ø6"},
             Row{true, "ABC", "", "ABC"},
             Row{true, "", "bolt_m6.prt", ""},
             Row{false, "ABC", "bolt_m6.prt", "ABC"},
         }) {
        ModelMetadata metadata;
        metadata.isPartFamily = row.isPartFamily;
        metadata.sourceFileId = row.sourceFileId;
        metadata.fileName = row.fileName;
        EXPECT_EQ(revisionLookupKey(metadata), row.key);
    }
}

struct RevisionLookup : testing::Test, SignedIn {
    Workspaces workspaces{workspace(7, "a")};
    ModelMetadata metadata;
    WorkspaceServiceCallbacks callbacks;
    int calls = 0;

    RevisionLookup() { metadata.sourceFileId = "ABC"; }
    void answer(const std::function<Revisions()>& revisions) {
        callbacks.findRevision = [this, revisions](auto&&...) { return ++calls, revisions(); };
    }
};

TEST_F(RevisionLookup, AsksForTheFileInTheWorkspace) {
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
        EXPECT_TRUE(lookup.lookedUp);
        EXPECT_EQ(lookup.matchesLatest, isAssembly);
        EXPECT_EQ(lookup.lookupKey, "ABC_bolt");
        EXPECT_EQ(lookup.message, "");
    }
}

TEST_F(RevisionLookup, AnUnknownWorkspaceIsNotLookedUp) {
    answer([] { return Revisions(1); });
    const auto lookup = lookupRevision(8, workspaces, session, metadata, callbacks);
    EXPECT_FALSE(lookup.lookedUp);
    EXPECT_FALSE(lookup.matchesLatest);
    EXPECT_EQ(lookup.lookupKey + lookup.message, "");
    EXPECT_EQ(calls, 0);
}

TEST_F(RevisionLookup, IsSilentWithoutATokenOrAService) {
    const auto unconfigured = lookupRevision(7, workspaces, session, metadata, {});
    answer([] { return Revisions(1); });
    const auto signedOut = lookupRevision(7, workspaces, auth::AuthSession(), metadata, callbacks);
    for (const auto& lookup : {unconfigured, signedOut}) {
        EXPECT_TRUE(lookup.lookedUp);
        EXPECT_FALSE(lookup.matchesLatest);
        EXPECT_EQ(lookup.message, "");
    }
    EXPECT_EQ(calls, 0);
}

TEST_F(RevisionLookup, AFailureMatchesNothing) {
    const std::pair<std::function<Revisions()>, const char*> rows[] = {
        {[]() -> Revisions { throw std::runtime_error("refused"); }, "refused"},
        {[]() -> Revisions { throw 1; }, "Revision lookup failed."},
    };
    for (const auto& [failure, message] : rows) {
        answer(failure);
        const auto lookup = lookupRevision(7, workspaces, session, metadata, callbacks);
        EXPECT_TRUE(lookup.lookedUp);
        EXPECT_FALSE(lookup.matchesLatest);
        EXPECT_EQ(lookup.message, message);
    }
}

}  // namespace
