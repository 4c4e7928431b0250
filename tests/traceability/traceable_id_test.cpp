// What a session's log says of identifiers is in tests/replays; the lines asserted here no session reaches.
#include <support/parts_fixture.h>
#include "nx/session.h"
#include "platform/text.h"
#include "traceability/nx_uuid.h"
#include "traceability/pivra_id_attribute.h"

#include <set>

namespace {

using devkit::SaveOutcome;
using test_support::otherUuid;
using test_support::uuid;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

constexpr const char* legacyId = "R-4711";

TEST(NxUuidFormat, takesEitherCaseAndNothingElse) {
    const std::pair<std::string, bool> cases[] = {
        {uuid, true},
        {"01234567-89AB-CDEF-0123-456789ABCDEF", true},
        {"012345678-9ab-cdef-0123-456789abcdef", false},  // first "-" one too late
        {"01234567-89ab-cdef-0123-456789abcdeg", false},
        {"01234567-89ab-cdef-0123-456789abcde", false},
        {"01234567-89ab-cdef-0123-456789abcdef0", false},
        {"01234567-89ab-cdef-0123-4567-9abcdef", false},
        {"", false},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(pivra::isNxUuidFormat(text), expected) << text;
}

TEST(GenerateTraceableId, givesDistinctRandomUuids) {
    std::set<std::string> ids;
    for (int i = 0; i < 200; ++i) {
        const std::string id = pivra::generateTraceableId();
        EXPECT_TRUE(pivra::isNxUuidFormat(id)) << id;
        EXPECT_EQ(id[14], '4') << id;
        EXPECT_THAT("89ab", testing::HasSubstr(std::string(1, id[19])));
        EXPECT_EQ(platform::toLower(id), id);
        ids.insert(id);
    }
    EXPECT_EQ(ids.size(), 200u);
}

class TraceableId : public test_support::PartsTest {
 protected:
    /// The one part of the session.
    devkit::PartData& addDisplayedBolt(const std::string& internalId, std::optional<std::string> attribute = {}) {
        const auto onEvent = session.onEvent;
        session.reset();
        session.onEvent = onEvent;
        devkit::PartData bolt;
        bolt.name = "bolt";
        bolt.fullPath = R"(C:\m\bolt.prt)";
        bolt.uniqueIdentifier = internalId;
        if (attribute) bolt.attributes["PIVRA_ID"] = *attribute;
        session.setDisplayed("bolt");
        return session.addPart(bolt);
    }
    /// Of a reading that has asked for nothing yet.
    nx::PartNames& fresh() { return names_ = {}; }
    std::string resolve() { return pivra::resolveTraceableId(object("bolt"), fresh()); }

 private:
    nx::PartNames names_;
};

TEST_F(TraceableId, isReadWithoutWriting) {
    const struct {
        const char* internalId;
        std::optional<std::string> attribute;
        std::string result;
        bool warningNeeded;
    } cases[] = {
        {uuid, {}, uuid, false},
        {uuid, otherUuid, uuid, false},
        {uuid, "nonsense", uuid, false},
        {legacyId, std::string(" \t") + otherUuid + "\r\n", otherUuid, false},
        {legacyId, "nonsense", legacyId, true},
        {legacyId, " ", legacyId, true},
        {legacyId, {}, legacyId, true},
        {" ", {}, " ", true},
        {"", uuid, "", false},
        {"", {}, "", false},
    };
    for (const auto& c : cases) {
        addDisplayedBolt(c.internalId, c.attribute);
        EXPECT_EQ(pivra::traceableId(object("bolt"), pivra::IdentifierForm::display, fresh()), c.result)
            << c.internalId;
        EXPECT_EQ(pivra::legacyIdWarningNeeded(object("bolt"), fresh()), c.warningNeeded) << c.internalId;
        // A part that is not the displayed one is left as it is by an upload, too.
        session.setDisplayed("");
        EXPECT_EQ(pivra::traceableId(object("bolt"), pivra::IdentifierForm::upload, fresh()), c.result) << c.internalId;
    }
    EXPECT_THAT(writes, IsEmpty());
    EXPECT_THAT(heads(), IsSupersetOf({"INFO Legacy NX internal ID detected",
                                       "INFO Legacy NX internal ID already has valid PIVRA_ID; warning suppressed",
                                       "WARNING Existing PIVRA_ID does not match NX UUID format",
                                       "INFO Legacy NX internal ID requires PIVRA_ID"}));
    EXPECT_THAT(heads(), Contains("WARNING Ignoring empty PIVRA_ID attribute").Times(2)) << "dialog and upload";
}

TEST_F(TraceableId, repairWritesAndSavesOnceAndForAll) {
    const auto& bolt = addDisplayedBolt(legacyId, "nonsense");
    const std::string id = resolve();
    EXPECT_TRUE(pivra::isNxUuidFormat(id)) << id;
    EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), id);
    EXPECT_TRUE(pivra::traceabilitySavedPart());
    EXPECT_EQ(pivra::traceabilityFailureMessage(), "");
    EXPECT_EQ(resolve(), id);
    EXPECT_THAT(writes, ElementsAre("attribute-written bolt " + id, "part-saved bolt"));
    EXPECT_THAT(heads(), IsSupersetOf({"WARNING Existing PIVRA_ID does not match NX UUID format and will be replaced",
                                       "INFO pivra_fix_legacy_id is true (default true).",
                                       "INFO PIVRA_ID attribute written in NX session"}));
    // A save without a status counts as a save.
    addDisplayedBolt(legacyId).save = SaveOutcome::nullStatus;
    EXPECT_NE(resolve(), "");
}

TEST_F(TraceableId, failedSaveLeavesTheAttributeEmptyAndTheFirstMessageStands) {
    const std::string message =
        R"(Legacy file(s) detected. Unable to upload because PIVRA_ID could not be saved for C:\m\bolt.prt (bolt).)";
    for (const SaveOutcome outcome : {SaveOutcome::unsavedObjects, SaveOutcome::unsavedParts, SaveOutcome::throws}) {
        auto& bolt = addDisplayedBolt(legacyId);
        bolt.save = outcome;
        EXPECT_EQ(resolve(), "");
        EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), "");
        EXPECT_EQ(pivra::traceabilityFailureMessage(), message);
        EXPECT_FALSE(pivra::traceabilitySavedPart());
        bolt.fullPath = "elsewhere";
        EXPECT_EQ(resolve(), "");
        EXPECT_EQ(pivra::traceabilityFailureMessage(), message) << "the first one";
        bolt.save = SaveOutcome::saved;
        EXPECT_TRUE(pivra::isNxUuidFormat(resolve())) << "each repair starts anew";
        pivra::clearTraceabilityFailureMessage();
        pivra::clearTraceabilitySavedPart();
    }
    EXPECT_THAT(heads(), Contains("WARNING Failed to save NX file after setting PIVRA_ID attribute").Times(2));
}

TEST_F(TraceableId, attributeThatCannotBeWrittenOrClearedIsReported) {
    auto& bolt = addDisplayedBolt(legacyId);
    interceptor.addFault({"NXOpen::NXObject::SetUserAttribute", 1});
    EXPECT_EQ(resolve(), "");
    EXPECT_THAT(bolt.attributes, IsEmpty());
    EXPECT_NE(pivra::traceabilityFailureMessage(), "");
    EXPECT_EQ(calls("NXOpen::BasePart::Save"), 0u);
    EXPECT_THAT(heads(), Contains("WARNING Failed to write PIVRA_ID attribute"));

    interceptor.addFault({"NXOpen::NXObject::SetUserAttribute", 3});
    bolt.save = SaveOutcome::unsavedParts;
    EXPECT_EQ(resolve(), "");
    EXPECT_THAT(heads(), Contains("WARNING Failed to clear unsaved PIVRA_ID attribute from NX session"));
    EXPECT_THAT(heads(), Not(Contains(testing::StartsWith("WARNING Cleared"))));
}

TEST_F(TraceableId, settingKeepsLegacyPartsAsTheyAre) {
    addDisplayedBolt(legacyId);
    folder.startLogging("pivra_fix_legacy_id = OFF\n");
    EXPECT_EQ(resolve(), legacyId);
    EXPECT_EQ(resolve(), legacyId);
    const std::string refusal = "WARNING pivra_fix_legacy_id is false; legacy NX internal ID will not be fixed";
    EXPECT_THAT(heads(), ElementsAre("INFO pivra_fix_legacy_id is false (configured value", refusal, refusal));
    EXPECT_THAT(writes, IsEmpty());
}

TEST_F(TraceableId, failedCleanupBringsTheAttributeBackAndBlocksNothing) {
    auto& bolt = addDisplayedBolt(uuid, otherUuid);
    bolt.save = SaveOutcome::throws;
    EXPECT_EQ(resolve(), uuid);
    EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), otherUuid);
    EXPECT_THAT(heads(),
                IsSupersetOf({"INFO Deleting redundant PIVRA_ID attribute because NX internal ID is UUID-style",
                              "INFO Redundant PIVRA_ID attribute deleted in NX session",
                              "WARNING Failed to save NX file after deleting redundant PIVRA_ID attribute",
                              "WARNING PIVRA_ID attribute was deleted but the NX part could not be saved",
                              "WARNING Restored unsaved PIVRA_ID attribute after cleanup save failure"}));
    interceptor.addFault({"NXOpen::NXObject::SetUserAttribute", 2});
    EXPECT_EQ(resolve(), uuid);
    EXPECT_EQ(heads().back(), "WARNING Failed to restore PIVRA_ID attribute after cleanup save failure");

    bolt.attributes["PIVRA_ID"] = otherUuid;
    interceptor.addFault({"NXOpen::NXObject::DeleteUserAttribute", 3});
    EXPECT_EQ(resolve(), uuid);
    EXPECT_EQ(heads().back(), "WARNING Failed to delete redundant PIVRA_ID attribute");
    EXPECT_FALSE(pivra::traceabilitySavedPart());
    EXPECT_EQ(pivra::traceabilityFailureMessage(), "");
    bolt.save = SaveOutcome::saved;
    EXPECT_EQ(resolve(), uuid);
    EXPECT_TRUE(pivra::traceabilitySavedPart());
}

TEST_F(TraceableId, hostFailuresStayInside) {
    addDisplayedBolt(legacyId, otherUuid);
    interceptor.addFault({"NXOpen::BasePart::UniqueIdentifier", 0});
    for (auto* part : {object("bolt"), static_cast<NXOpen::BasePart*>(nullptr)}) {
        EXPECT_EQ(pivra::resolveDisplayTraceableId(part, fresh()), "");
        EXPECT_EQ(pivra::resolveTraceableId(part, fresh()), "");
        EXPECT_FALSE(pivra::legacyIdWarningNeeded(part, fresh()));
    }
    EXPECT_THAT(heads(), ElementsAre("WARNING Failed to read NX internal ID while resolving display traceable ID",
                                     "WARNING Failed to read NX internal ID while resolving traceable ID",
                                     "WARNING Failed to inspect NX internal ID"));
    interceptor.reset();

    // An attribute that cannot be read counts as absent, and a session that is gone has no displayed part.
    interceptor.addFault({"NXOpen::NXObject::GetUserAttributeAsString", 1});
    EXPECT_EQ(pivra::resolveDisplayTraceableId(object("bolt"), fresh()), legacyId);
    interceptor.addFault({"NXOpen::Session::GetSession", 1, 1, "", devkit::FaultKind::null});
    interceptor.addFault({"NXOpen::NXObject::HasUserAttribute", 2});
    EXPECT_EQ(resolve(), legacyId);
    EXPECT_THAT(writes, IsEmpty());
}

}  // namespace
