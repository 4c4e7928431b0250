// The session as a replay describes it, and its parts as the C interface names them.
#include <uf_part.h>
#include <NXOpen/BasePart.hxx>
#include "platform/text_encoding.h"

#include <stdexcept>

#include "host_fixture.h"

namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

class NxopenSession : public devkit_test::HostTest {};

TEST_F(NxopenSession, editsOnePartAndLeavesForeignFilesAlone) {
    const auto foreign = folder.writeFile("foreign.prt", "mine");
    const nlohmann::json bolt{{"name", "bolt"}, {"file", "bolt.prt"}, {"leaf", "Bolt"}};
    const nlohmann::json far{{"name", "far"}, {"path", platform::utf8FromPath(foreign)}, {"missing", true}};
    devkit::loadSession({{"parts", {bolt, far}}}, folder.path() / "own");
    EXPECT_EQ(test_support::readFile(foreign), "mine");

    const auto edit = [&](const nlohmann::json& change) { devkit::editPart(change, folder.path() / "own"); };
    edit({{"name", "bolt"}, {"contents", "2"}});
    EXPECT_EQ(session.findPart("bolt")->leaf, "Bolt");
    EXPECT_EQ(test_support::readFile(folder.path() / "own" / "bolt.prt"), "2");
    EXPECT_THAT([&] { edit({{"name", "nut"}}); }, ThrowsMessage<std::runtime_error>(HasSubstr("edit.name: no part")));
    EXPECT_THAT(
        [&] {
            edit({{"name", "bolt"}, {"leaf", "x"}, {"components", {"nut"}}});
        },
        ThrowsMessage<std::runtime_error>(HasSubstr("edit.components[0]")));
    EXPECT_EQ(session.findPart("bolt")->leaf, "Bolt");
}

TEST_F(NxopenSession, narrowTextIsInTheFileSystemsCodePage) {
    using NXOpen::NXString;
    const std::string narrow = platform::fileSystemTextFromPath(std::filesystem::path(u8"größe"));
    EXPECT_STREQ(NXString(narrow).GetUTF8Text(), "größe");
    EXPECT_EQ(NXString("größe", NXString::UTF8).GetLocaleText(), narrow);

    addPart("bolt").fullPath = "größe";
    addPart("long").fullPath = std::string(MAX_FSPEC_BUFSIZE, 'x');
    const tag_t bolt = session.object("bolt")->Tag();
    const devkit_test::Bracket bracket;
    char name[MAX_FSPEC_BUFSIZE] = "";
    EXPECT_EQ(UF_PART_ask_part_name(bolt, name), 0);
    EXPECT_EQ(name, narrow);
    EXPECT_NE(UF_PART_ask_part_name(session.object("long")->Tag(), name), 0);
    session.reset();
    EXPECT_NE(UF_PART_ask_part_name(bolt, name), 0);
}

}  // namespace
