#include "parts_fixture.h"

#include <traceability/part_label.h>

namespace {

using devkit::SaveOutcome;
using parts_test::otherUuid;
using parts_test::uuid;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* legacyId = "R-4711";
const std::string part = "part=\"C:\\m\\bolt.prt (bolt)\"";

TEST(NxUuidFormat, takesEitherCaseAndNothingElse) {
    const std::pair<std::string, bool> cases[] = {
        {uuid, true},
        {"01234567-89AB-CDEF-0123-456789ABCDEF", true},
        {"012345678-9ab-cdef-0123-456789abcdef", false},  // first "-" one too late
        {"01234567-89ab-cdef-0123-456789abcdeg", false},
        {"01234567-89ab-cdef-0123-456789abcde", false},
        {"01234567-89ab-cdef-0123-456789abcdef0", false},
        {"01234567-89ab-cdef-0123-456789abcde ", false},
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
        EXPECT_EQ(config::toLower(id), id);
        ids.insert(id);
    }
    EXPECT_EQ(ids.size(), 200u);
}

struct ReadCase {
    const char* internalId;
    std::optional<std::string> attribute;
    std::string result;
    std::vector<std::string> log;
};

class TraceableId : public parts_test::PartsTest {
 protected:
    devkit::PartData& addBolt(const std::string& internalId, std::optional<std::string> attribute = {}) {
        devkit::PartData bolt;
        bolt.name = "bolt";
        bolt.fullPath = R"(C:\m\bolt.prt)";
        bolt.uniqueIdentifier = internalId;
        if (attribute) bolt.attributes["PIVRA_ID"] = *attribute;
        return session.addPart(bolt);
    }
    devkit::PartData& addDisplayedBolt(const std::string& internalId, std::optional<std::string> attribute = {}) {
        session.setDisplayed("bolt");
        return addBolt(internalId, attribute);
    }
    /// Resolves each case's bolt, which gives its result and its lines, and writes nothing.
    template <std::size_t count>
    void expectReads(const ReadCase (&cases)[count], pivra::IdentifierForm form, const std::string& displayed) {
        std::vector<std::string> expectedLog;
        for (const ReadCase& c : cases) {
            session.reset();
            session.setDisplayed(displayed);
            addBolt(c.internalId, c.attribute);
            EXPECT_EQ(pivra::traceableId(object("bolt"), form), c.result) << c.internalId;
            expectedLog.insert(expectedLog.end(), c.log.begin(), c.log.end());
            EXPECT_EQ(log(), expectedLog);
        }
        EXPECT_EQ(calls("NXOpen::NXObject::SetUserAttribute"), 0u);
        EXPECT_EQ(calls("NXOpen::BasePart::Save"), 0u);
    }
    /// The fields of a line about a change of the attribute to `value`.
    static std::string change(const char* idName, const std::string& id, const std::string& value) {
        return " " + part + " " + idName + "=\"" + id + "\" pivra_id=\"" + value + "\".";
    }
};

TEST_F(TraceableId, displayFormReadsAndNeverWrites) {
    const ReadCase cases[] = {
        {uuid, {}, uuid, {}},
        {uuid,
         otherUuid,
         uuid,
         {"INFO Using NX internal ID because it is UUID-style; PIVRA_ID attribute ignored: " + part + " nx_id=\"" +
          uuid + "\" pivra_id=\"" + otherUuid + "\"."}},
        {uuid,
         "",
         uuid,
         {"INFO Using NX internal ID because it is UUID-style; PIVRA_ID attribute ignored: " + part + " nx_id=\"" +
          uuid + "\" pivra_id=\"\"."}},
        {legacyId,
         std::string(" \t") + otherUuid + "\r\n",
         otherUuid,
         {"INFO Using existing PIVRA_ID for legacy NX internal ID while reading display traceable ID: " + part +
          " legacy_id=\"R-4711\" pivra_id=\"" + otherUuid + "\"."}},
        {legacyId,
         "nonsense",
         legacyId,
         {"WARNING Ignoring invalid PIVRA_ID while reading display traceable ID: " + part +
          " nx_id=\"R-4711\" pivra_id=\"nonsense\"."}},
        {legacyId,
         " ",
         legacyId,
         {"WARNING Ignoring empty PIVRA_ID attribute while reading display traceable ID: " + part +
          " nx_id=\"R-4711\"."}},
        {legacyId, {}, legacyId, {}},
        {" ", {}, " ", {}},
        {"", {}, "", {}},
        {"", "", "", {}},
        {"",
         uuid,
         "",
         {"WARNING Ignoring PIVRA_ID attribute because NX internal ID is not legacy: " + part +
          " nx_id=\"\" pivra_id=\"" + uuid + "\"."}},
    };
    expectReads(cases, pivra::IdentifierForm::display, "bolt");
}

TEST_F(TraceableId, uploadFormLeavesMembersAlone) {
    const ReadCase cases[] = {
        {uuid, {}, uuid, {}},
        {uuid,
         otherUuid,
         uuid,
         {"INFO Using NX internal ID because it is UUID-style; PIVRA_ID attribute cleanup needed:" +
              change("nx_id", uuid, otherUuid),
          "INFO Skipping PIVRA_ID cleanup for non-top-level NX part:" + change("nx_id", uuid, otherUuid)}},
        {legacyId,
         otherUuid,
         otherUuid,
         {"INFO Using existing PIVRA_ID for legacy NX internal ID:" + change("legacy_id", legacyId, otherUuid)}},
        {legacyId,
         "nonsense",
         legacyId,
         {"WARNING Ignoring invalid PIVRA_ID for non-top-level part: " + part + " legacy_id=\"R-4711\".",
          "INFO Skipping PIVRA_ID repair for non-top-level legacy NX part: " + part + " legacy_id=\"R-4711\"."}},
        {legacyId,
         "",
         legacyId,
         {"WARNING Ignoring empty PIVRA_ID attribute: " + part + " nx_id=\"R-4711\".",
          "INFO Skipping PIVRA_ID repair for non-top-level legacy NX part: " + part + " legacy_id=\"R-4711\"."}},
        {legacyId,
         {},
         legacyId,
         {"INFO Skipping PIVRA_ID repair for non-top-level legacy NX part: " + part + " legacy_id=\"R-4711\"."}},
        {"",
         uuid,
         "",
         {"WARNING Ignoring PIVRA_ID attribute because NX internal ID is not legacy:" + change("nx_id", "", uuid)}},
    };
    expectReads(cases, pivra::IdentifierForm::upload, "");
}

TEST_F(TraceableId, repairWritesAndSavesOnceAndForAll) {
    const auto& bolt = addDisplayedBolt(legacyId);
    const std::string id = pivra::resolveTraceableId(object("bolt"));
    EXPECT_TRUE(pivra::isNxUuidFormat(id)) << id;
    EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), id);
    EXPECT_TRUE(pivra::traceabilitySavedPart());
    EXPECT_EQ(pivra::traceabilityFailureMessage(), "");
    EXPECT_THAT(log(),
                ElementsAre("INFO pivra_fix_legacy_id is true (default true).",
                            "INFO Generated PIVRA_ID for legacy NX internal ID:" + change("legacy_id", legacyId, id),
                            "INFO PIVRA_ID attribute written in NX session:" + change("legacy_id", legacyId, id),
                            "INFO PIVRA_ID attribute saved to NX file:" + change("legacy_id", legacyId, id)));

    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), id);
    EXPECT_THAT(writes, ElementsAre("attribute-written bolt " + id, "part-saved bolt"));
}

TEST_F(TraceableId, repairReplacesWhatIsNoIdentifier) {
    const auto& bolt = addDisplayedBolt(legacyId, "nonsense");
    const std::string id = pivra::resolveTraceableId(object("bolt"));
    EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), id);
    EXPECT_EQ(log().front(), "WARNING Existing PIVRA_ID does not match NX UUID format and will be replaced:" +
                                 change("legacy_id", legacyId, "nonsense"));
}

TEST_F(TraceableId, nullStatusOfASaveIsSuccess) {
    addDisplayedBolt(legacyId).save = SaveOutcome::nullStatus;
    EXPECT_NE(pivra::resolveTraceableId(object("bolt")), "");
    EXPECT_TRUE(pivra::traceabilitySavedPart());
}

TEST_F(TraceableId, failedSaveLeavesTheAttributeEmptyAndSaysWhy) {
    const std::string message =
        R"(Legacy file(s) detected. Unable to upload because PIVRA_ID could not be saved for C:\m\bolt.prt (bolt).)";
    for (const SaveOutcome outcome : {SaveOutcome::unsavedObjects, SaveOutcome::unsavedParts, SaveOutcome::throws}) {
        session.reset();
        pivra::clearTraceabilityFailureMessage();
        auto& bolt = addDisplayedBolt(legacyId);
        bolt.save = outcome;
        const std::size_t linesBefore = log().size();
        EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), "");
        EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), "");
        EXPECT_EQ(pivra::traceabilityFailureMessage(), message);
        EXPECT_FALSE(pivra::traceabilitySavedPart());

        auto lines = log();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(linesBefore));
        const std::string id = lines.back().substr(lines.back().size() - 38, 36);
        std::vector<std::string> expected{
            "WARNING PIVRA_ID attribute was set but the NX part could not be saved:" +
                change("legacy_id", legacyId, id),
            "WARNING Cleared unsaved PIVRA_ID attribute from NX session:" + change("legacy_id", legacyId, id),
            "WARNING " + message + " legacy_id=\"R-4711\" pivra_id=\"" + id + "\"."};
        if (outcome == SaveOutcome::throws) {
            expected.insert(expected.begin(), "WARNING Failed to save NX file after setting PIVRA_ID attribute:" +
                                                  change("legacy_id", legacyId, id));
        }
        ASSERT_GE(lines.size(), expected.size());
        EXPECT_EQ(std::vector(lines.end() - static_cast<std::ptrdiff_t>(expected.size()), lines.end()), expected);
    }
}

TEST_F(TraceableId, afterAFailedRepairTheNextOneStartsAnewAndTheFirstMessageStays) {
    auto& bolt = addDisplayedBolt(legacyId);
    bolt.save = SaveOutcome::unsavedObjects;
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), "");
    const std::string first = pivra::traceabilityFailureMessage();

    devkit::PartData nut = bolt;
    nut.name = "nut";
    nut.fullPath = R"(C:\m\nut.prt)";
    session.addPart(nut);
    session.setDisplayed("nut");
    EXPECT_EQ(pivra::resolveTraceableId(object("nut")), "");
    EXPECT_EQ(pivra::traceabilityFailureMessage(), first);
    EXPECT_THAT(logLinesOf("WARNING Legacy file(s) detected."), testing::SizeIs(1));
    EXPECT_THAT(logLinesOf("WARNING Ignoring empty PIVRA_ID attribute:"), testing::SizeIs(1));

    session.setDisplayed("bolt");
    bolt.save = SaveOutcome::saved;
    EXPECT_TRUE(pivra::isNxUuidFormat(pivra::resolveTraceableId(object("bolt"))));
}

TEST_F(TraceableId, attributeThatCannotBeWrittenOrClearedIsReported) {
    auto& bolt = addDisplayedBolt(legacyId);
    gate.addFault({"NXOpen::NXObject::SetUserAttribute", 1});
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), "");
    EXPECT_THAT(bolt.attributes, IsEmpty());
    EXPECT_THAT(logLinesOf("WARNING Failed to write PIVRA_ID attribute: part="), testing::SizeIs(1));
    EXPECT_NE(pivra::traceabilityFailureMessage(), "");
    EXPECT_EQ(calls("NXOpen::BasePart::Save"), 0u);

    gate.addFault({"NXOpen::NXObject::SetUserAttribute", 3});
    bolt.save = SaveOutcome::unsavedParts;
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), "");
    EXPECT_THAT(logLinesOf("WARNING Failed to clear unsaved PIVRA_ID attribute from NX session: part="),
                testing::SizeIs(1));
    EXPECT_THAT(logLinesOf("WARNING Cleared"), IsEmpty());
}

TEST_F(TraceableId, settingKeepsLegacyPartsAsTheyAre) {
    addDisplayedBolt(legacyId);
    folder.startLogging("pivra_fix_legacy_id = OFF\n");
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), legacyId);
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), legacyId);
    const std::string refusal =
        "WARNING pivra_fix_legacy_id is false; legacy NX internal ID will not be fixed: " + part +
        " legacy_id=\"R-4711\".";
    EXPECT_THAT(log(), ElementsAre("INFO pivra_fix_legacy_id is false (configured value: \"OFF\").", refusal, refusal));
    EXPECT_THAT(writes, IsEmpty());

    folder.startLogging("pivra_fix_legacy_id = perhaps\n");
    EXPECT_TRUE(pivra::fixLegacyIdEnabled());
    EXPECT_THAT(logLinesOf("WARNING pivra.properties"),
                ElementsAre("WARNING pivra.properties: unrecognized value for pivra_fix_legacy_id: \"perhaps\"; using "
                            "default true."));
    EXPECT_EQ(log().back(), "INFO pivra_fix_legacy_id is true (configured value: \"perhaps\").");
}

TEST_F(TraceableId, cleanupDeletesARedundantAttribute) {
    auto& bolt = addDisplayedBolt(uuid, otherUuid);
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), uuid);
    EXPECT_THAT(bolt.attributes, IsEmpty());
    EXPECT_TRUE(pivra::traceabilitySavedPart());
    const std::string fields = change("nx_id", uuid, otherUuid);
    EXPECT_THAT(
        log(),
        ElementsAre("INFO Using NX internal ID because it is UUID-style; PIVRA_ID attribute cleanup needed:" + fields,
                    "INFO Deleting redundant PIVRA_ID attribute because NX internal ID is UUID-style:" + fields,
                    "INFO Redundant PIVRA_ID attribute deleted in NX session:" + fields,
                    "INFO Redundant PIVRA_ID attribute deleted from NX file:" + fields));
    EXPECT_THAT(writes, ElementsAre("attribute-deleted bolt", "part-saved bolt"));
}

TEST_F(TraceableId, failedCleanupBringsTheAttributeBackAndBlocksNothing) {
    auto& bolt = addDisplayedBolt(uuid, otherUuid);
    bolt.save = SaveOutcome::throws;
    const std::string fields = change("nx_id", uuid, otherUuid);
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), uuid);
    EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), otherUuid);
    auto lines = log();
    lines.erase(lines.begin(), lines.begin() + 3);
    EXPECT_THAT(lines,
                ElementsAre("WARNING Failed to save NX file after deleting redundant PIVRA_ID attribute:" + fields,
                            "WARNING PIVRA_ID attribute was deleted but the NX part could not be saved:" + fields,
                            "WARNING Restored unsaved PIVRA_ID attribute after cleanup save failure:" + fields));

    gate.addFault({"NXOpen::NXObject::SetUserAttribute", 2});
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), uuid);
    EXPECT_EQ(log().back(), "WARNING Failed to restore PIVRA_ID attribute after cleanup save failure:" + fields);

    bolt.attributes["PIVRA_ID"] = otherUuid;
    gate.addFault({"NXOpen::NXObject::DeleteUserAttribute", 3});
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), uuid);
    EXPECT_EQ(log().back(), "WARNING Failed to delete redundant PIVRA_ID attribute:" + fields);
    EXPECT_FALSE(pivra::traceabilitySavedPart());
    EXPECT_EQ(pivra::traceabilityFailureMessage(), "");
}

TEST_F(TraceableId, warningIsForLegacyPartsWithoutAValidAttribute) {
    const std::string detected = "INFO Legacy NX internal ID detected: " + part + " legacy_id=\"R-4711\".";
    const std::string required = "INFO Legacy NX internal ID requires PIVRA_ID: " + part + " legacy_id=\"R-4711\".";
    struct {
        const char* internalId;
        std::optional<std::string> attribute;
        bool needed;
        std::vector<std::string> log;
    } cases[] = {
        {"", uuid, false, {}},
        {uuid, "nonsense", false, {}},
        {legacyId, {}, true, {detected, required}},
        {legacyId,
         uuid,
         false,
         {detected, "INFO Legacy NX internal ID already has valid PIVRA_ID; warning suppressed:" +
                        change("legacy_id", legacyId, uuid)}},
        {legacyId,
         "nonsense",
         true,
         {detected,
          "WARNING Existing PIVRA_ID does not match NX UUID format: " + part +
              " legacy_id=\"R-4711\" pivra_id=\"nonsense\"; replacement required.",
          required}},
        {legacyId,
         "",
         true,
         {detected, "WARNING Ignoring empty PIVRA_ID attribute: " + part + " legacy_id=\"R-4711\".", required}},
    };
    std::vector<std::string> expectedLog;
    for (const auto& c : cases) {
        session.reset();
        addBolt(c.internalId, c.attribute);
        EXPECT_EQ(pivra::legacyIdWarningNeeded(object("bolt")), c.needed) << c.internalId;
        expectedLog.insert(expectedLog.end(), c.log.begin(), c.log.end());
        EXPECT_EQ(log(), expectedLog);
    }
    EXPECT_FALSE(pivra::legacyIdWarningNeeded(nullptr));
}

TEST_F(TraceableId, hostFailuresStayInside) {
    addDisplayedBolt(legacyId, otherUuid);
    gate.addFault({"NXOpen::BasePart::UniqueIdentifier", 0});
    EXPECT_EQ(pivra::resolveDisplayTraceableId(object("bolt")), "");
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), "");
    EXPECT_FALSE(pivra::legacyIdWarningNeeded(object("bolt")));
    EXPECT_EQ(pivra::resolveDisplayTraceableId(nullptr), "");
    EXPECT_EQ(pivra::resolveTraceableId(nullptr), "");
    EXPECT_THAT(log(),
                ElementsAre("WARNING Failed to read NX internal ID while resolving display traceable ID: " + part + ".",
                            "WARNING Failed to read NX internal ID while resolving traceable ID: " + part + ".",
                            "WARNING Failed to inspect NX internal ID: " + part + "."));
    gate.reset();

    // An attribute that cannot be read counts as absent, and a session that is gone has no displayed part.
    gate.addFault({"NXOpen::NXObject::GetUserAttributeAsString", 1});
    EXPECT_EQ(pivra::resolveDisplayTraceableId(object("bolt")), legacyId);
    gate.addFault({"NXOpen::Session::GetSession", 1, 1, "", true});
    gate.addFault({"NXOpen::NXObject::HasUserAttribute", 2});
    EXPECT_EQ(pivra::resolveTraceableId(object("bolt")), legacyId);
    EXPECT_THAT(writes, IsEmpty());
}

TEST_F(TraceableId, partLabelNamesWhatThereIs) {
    const auto label = [&](const std::string& path, const std::string& leaf) {
        session.reset();
        devkit::PartData data;
        data.name = "p";
        data.fullPath = path;
        session.addPart(data).leaf = leaf;
        return pivra::partLogLabel(object("p"));
    };
    EXPECT_EQ(pivra::partLogLabel(nullptr), "<null part>");
    EXPECT_EQ(label("", ""), "<unnamed NX part>");
    EXPECT_EQ(label("", "Größe"), "Größe");
    EXPECT_EQ(label("@DB/1/A", ""), "@DB/1/A");
    EXPECT_EQ(label("@DB/1/A", "1/A"), "@DB/1/A (1/A)");
    gate.addFault({"NXOpen::BasePart::FullPath", 0});
    EXPECT_EQ(pivra::partLogLabel(object("p")), "1/A");
}

}  // namespace
