// Every call passes the interceptor, whatever the plug-in does.
#include <NXOpen/NXException.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/UI.hxx>

#include <thread>

#include "host_fixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

class NxopenInterceptor : public devkit_test::HostTest {};

TEST_F(NxopenInterceptor, callsOfTheCInterfaceNeedTheBracket) {
    int module = 7;
    EXPECT_NE(UF_ask_application_module(&module), 0);
    EXPECT_EQ(module, 7);
    UF_initialize();
    UF_initialize();
    UF_terminate();
    EXPECT_EQ(UF_ask_application_module(&module), 0);
    UF_terminate();
    UF_free(nullptr);
    UF_terminate();
    EXPECT_THAT(interceptor.violations(), ElementsAre(HasSubstr("UF_ask"), HasSubstr("without UF_initialize")));
    EXPECT_EQ(interceptor.bracketDepth(), 0);
}

TEST_F(NxopenInterceptor, callsOnAnotherThreadFailAndAreKept) {
    const devkit_test::Bracket bracket;
    std::thread([] {
        EXPECT_NE(UF_terminate(), 0);
        EXPECT_THROW(NXOpen::Session::GetSession(), NXOpen::NXException);
    }).join();
    EXPECT_THAT(interceptor.violations(), ElementsAre(HasSubstr("UF_terminate"), HasSubstr("Session::GetSession")));
    EXPECT_EQ(interceptor.bracketDepth(), 1);
    EXPECT_THAT(interceptor.calls(), ElementsAre("UF_initialize", "UF_terminate", "NXOpen::Session::GetSession"));
}

TEST_F(NxopenInterceptor, failsTheNumberedCallByStatusExceptionOrNull) {
    interceptor.addFault({"UF_initialize", 2, 17});
    interceptor.addFault({"NXOpen::Session::GetSession", 1, 1, "No licence."});
    interceptor.addFault({"NXOpen::Session::GetSession", 2, 1, "", devkit::FaultKind::null});
    interceptor.addFault({"NXOpen::NXMessageBox::Show", 0, 1, "No box.", devkit::FaultKind::null});
    interceptor.addFault({"", 10, 5});
    EXPECT_EQ(UF_initialize(), 0);
    EXPECT_EQ(UF_initialize(), 17);
    EXPECT_THAT([] { NXOpen::Session::GetSession(); }, ThrowsMessage<std::exception>("No licence."));
    EXPECT_EQ(NXOpen::Session::GetSession(), nullptr);
    EXPECT_NE(NXOpen::Session::GetSession(), nullptr);

    auto* box = NXOpen::UI::GetUI()->NXMessageBox();
    const auto show = [box] { box->Show("", NXOpen::NXMessageBox::DialogTypeError, ""); };
    EXPECT_THAT(show, ThrowsMessage<NXOpen::NXException>("No box."));
    EXPECT_THAT(show, ThrowsMessage<NXOpen::NXException>("No box."));
    EXPECT_EQ(UF_terminate(), 5);
    EXPECT_THAT(interceptor.violations(), testing::IsEmpty());
}

}  // namespace
