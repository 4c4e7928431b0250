// What the host finds in the library. No exception leaves these functions.
#include "report.h"

#include <nx/text.h>

#include <uf.h>
#include <uf_exit.h>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

// The resource that a signed library carries.
#include <NXSigningResource.cpp>

namespace {

void show(const std::string& text) {
    NXOpen::UI::GetUI()->NXMessageBox()->Show(nx::toHost("Pivra contract"), NXOpen::NXMessageBox::DialogTypeInformation,
                                              nx::toHost(text));
}

void run() {
    // One for the host's session: each run adds what it could try.
    static contract::Report report;
    report.tryWhatIsLeft();
    show(report.summary());
}

}  // namespace

extern "C" {

DllExport void ufusr(char* /*param*/, int* /*retcod*/, int /*param_len*/) {
    try {
        try {
            run();
        } catch (const contract::Needs& needs) {
            show("The checks need " + needs.what + ".");
        }
    } catch (...) {
        // There is no box either: the file has what was found.
    }
}

/// The report lives in the library, so it stays as the plug-in does.
DllExport int ufusr_ask_unload() {
    return UF_UNLOAD_UG_TERMINATE;
}

DllExport void ufusr_cleanup() {}
}
