// The host as such: the numbers behind its names, its texts, brackets, exceptions and help contexts. No part is needed.
#include "check.h"
#include "parts.h"

#include <export/host_numbers.h>
#include <nx/display_part.h>
#include <nx/text.h>
#include <platform/files.h>
#include <platform/module.h>
#include <platform/text_encoding.h>

#include <uf.h>
#include <uf_clone.h>
#include <uf_exit.h>
#include <uf_help.h>
#include <uf_part.h>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/PrintPDFBuilder.hxx>
#include <NXOpen/UI.hxx>
#include <NXOpen/Update.hxx>

#include <exception>
#include <memory>

namespace contract {
namespace {

using namespace pivra::host_numbers;

const std::string foreignText = "Ø80 – 図面";

std::string number(int seen, int assumed) {
    return unless(seen == assumed, "it is " + std::to_string(seen));
}

std::string statedNumbers() {
    using NXOpen::NXMessageBox;
    const bool agree = UF_UNLOAD_UG_TERMINATE == 3 && NXOpen::NXObject::AttributeTypeString == 5 &&
                       NXMessageBox::DialogTypeError == 0 && NXMessageBox::DialogTypeInformation == 2 &&
                       NXOpen::Update::OptionNow == 0;
    return unless(agree, "at least one of them differs");
}

std::string hexadecimal(const std::string& bytes) {
    std::string digits;
    for (const char byte : bytes) {
        for (const int half : {static_cast<unsigned char>(byte) >> 4, byte & 0xF}) digits += "0123456789ABCDEF"[half];
    }
    return digits;
}

std::string utf8RoundTrip() {
    const auto back = nx::utf8(nx::toHost(foreignText));
    return unless(back == foreignText, "the bytes " + hexadecimal(back));
}

std::string localeText() {
    const auto text = nx::localeText("Ø");
    return unless(text == narrowText("Ø"), "Ø is " + hexadecimal(text));
}

std::string standardException() {
    try {
        const std::unique_ptr<NXOpen::BlockStyler::BlockDialog> dialog(
            NXOpen::UI::GetUI()->CreateDialog("pivra-no-such-layout.dlx"));
    } catch (const std::exception& error) {
        return unless(error.what()[0] != '\0', "it has no text");
    }
    return "a layout that is not there gives no exception";
}

std::string nestedBrackets() {
    const Bracket outer;
    { const Bracket inner; }
    int module = 0;
    Statuses statuses;
    statuses.note("after the inner bracket UF_ask_application_module", UF_ask_application_module(&module));
    return statuses.seen();
}

std::string helpMap() {
    const auto file = platform::moduleDirectory() / "pivrahelp.map";
    if (!platform::isRegularFile(file)) throw Needs{"pivrahelp.map beside this library"};
    auto name = narrowText(platform::utf8FromPath(file));
    const Bracket bracket;
    Statuses statuses;
    statuses.note("UF_HELP_load_map_file", UF_HELP_load_map_file(name.data()));
    return statuses.seen();
}

std::string helpContext() {
    char context[] = "pivrahelp";
    const Bracket bracket;
    Statuses statuses;
    statuses.note("UF_HELP_push_primary_context", UF_HELP_push_primary_context(context));
    statuses.note("UF_HELP_pop_context", UF_HELP_pop_context());
    return statuses.seen();
}

std::string emptyHelpStack() {
    char context[] = "pivrahelp";
    const Bracket bracket;
    require("UF_HELP_push_primary_context", UF_HELP_push_primary_context(context));
    require("UF_HELP_pop_context", UF_HELP_pop_context());
    return unless(UF_HELP_pop_context() != 0, "it was popped once more than pushed");
}

std::string noDisplayedPart() {
    const Bracket bracket;
    if (UF_PART_ask_display_part() != NULL_TAG) throw Needs{"a session without a displayed part"};
    return unless(nx::displayedPart() == nullptr, "a part");
}

}  // namespace

std::vector<Check> hostChecks() {
    return {
        {"number-clone-operation", [] { return number(UF_CLONE_export_operation, cloneOperation); }},
        {"number-clone-action", [] { return number(UF_CLONE_overwrite, cloneAction); }},
        {"number-family-treatment", [] { return number(UF_CLONE_strip_family_status, familyTreatment); }},
        {"number-clone-naming", [] { return number(UF_CLONE_naming_rule, cloneNaming); }},
        {"number-name-rule", [] { return number(UF_CLONE_replace_string, 0); }},
        {"number-pdf-action", [] { return number(NXOpen::PrintPDFBuilder::ActionOptionNative, printAction); }},
        {"number-drafting-module", [] { return number(UF_APP_DRAFTING, draftingModule); }},
        {"numbers-by-name", statedNumbers},
        {"file-name-buffer", [] { return unless(MAX_FSPEC_BUFSIZE > 260, std::to_string(MAX_FSPEC_BUFSIZE)); }},
        {"text-utf8", utf8RoundTrip},
        {"text-locale", localeText},
        {"exception-standard", standardException},
        {"bracket-nests", nestedBrackets},
        {"help-map", helpMap},
        {"help-context", helpContext},
        {"help-empty-stack", emptyHelpStack},
        {"display-none", noDisplayedPart},
    };
}

}  // namespace contract
