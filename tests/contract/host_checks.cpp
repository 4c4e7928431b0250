// The host as such: its texts, brackets and help contexts. No part is needed.
#include "check.h"

#include "platform/error_text.h"
#include "platform/module.h"

#include <uf_clone.h>
#include <uf_help.h>

namespace contract {

void addHostChecks() {
    check("number-name-rule",
          [] { expect(UF_CLONE_replace_string == 0, "it is " + std::to_string(UF_CLONE_replace_string)); });
    check("text-utf8", [] {
        const std::string text = "Ø80 – 図面";
        const auto back = nx::utf8(nx::toHost(text));
        expect(back == text, back);
    });
    check("text-locale", [] {
        std::string narrow;
        if (platform::errorOf([&] { narrow = platform::fileSystemTextFromPath(platform::pathFromUtf8("Ø")); }))
            throw Needs{"a code page with the letter Ø"};
        const auto text = nx::localeText("Ø");
        expect(text == narrow, text);
    });
    check("bracket-nests", [] {
        { const nx::UfSession inner; }
        int module = 0;
        succeed({{"after an inner bracket UF_ask_application_module", UF_ask_application_module(&module)}});
    });
    check("help-map", [] {
        auto name = platform::fileSystemTextFromPath(platform::moduleDirectory() / "pivrahelp.map");
        succeed({{"UF_HELP_load_map_file", UF_HELP_load_map_file(name.data())}});
    });
    check("help-context", [] {
        char context[] = "pivrahelp";
        succeed({{"UF_HELP_push_primary_context", UF_HELP_push_primary_context(context)},
                 {"UF_HELP_pop_context", UF_HELP_pop_context()}});
    });
}

}  // namespace contract
