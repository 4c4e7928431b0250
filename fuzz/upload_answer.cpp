// What becomes of the service's answer to an upload: its outcome, and the link to the uploaded revision.
#include "platform/text.h"
#include "service/scripted_sign_in.h"
#include "service/upload_execution.h"
#include "target.h"
#include "ui/upload_link.h"

#include <cpp_piv/client.h>

namespace {

struct Bridge : cpp_piv::CppPivBridgeInterface {
    explicit Bridge(std::string text) : answer(std::move(text)) {}
    std::string call(const std::string&, const std::string&) override { return answer; }
    void setLogSink(std::function<void(const std::string&, const std::string&)>) override {}

    std::string answer;
};

pivra::UploadExecutionResult upload(const std::string& answer) {
    static auth::AuthSession session;
    if (!session.isSignedIn()) test_support::ScriptedSignIn().signIn(session);
    const cpp_piv::CppPivClient client(std::make_shared<Bridge>(answer), nullptr);
    pivra::WorkspaceServiceCallbacks service;
    service.rootDirectory = [](const auto&...) { return cpp_piv::CppPivDirectory(); };
    service.upload = [&](const auto&... arguments) { return client.upload(arguments...); };
    pivra::ModelMetadata metadata;
    metadata.exportedFile = "bolt.prt";
    return pivra::executeUpload(0, std::vector<cpp_piv::CppPivWorkspace>(1), session, metadata, service);
}

void checkLink(std::map<std::string, std::string> entries) {
    const auto link = ui::uploadLink(entries);
    if (!link) return;
    const auto lower = platform::toLower(*link);
    require(lower.starts_with("http://") || lower.starts_with("https://"), "a link is a web address");
    for (const char c : *link) require(c > ' ' && c < 0x7F && c != '"', "an address is one word");
    entries.emplace("unrelated", "words");
    require(ui::uploadLink(entries) == link, "words mean nothing");
    require(!ui::uploadLink({{"revisionId", "of none"}, {"link", *link}}), "another revision's link is never taken");
}

}  // namespace

void check(const std::string& input) {
    const auto result = upload(input);
    require(result.attempted && result.succeeded == (result.errors.empty() && result.message.empty()),
            "an upload succeeds, or says why not");
    checkLink(result.responseEntries);
}
