// What the host finds in the library: each run tries what could not be tried before, and reports.
#include "check.h"

#include "platform/error_text.h"

#include <uf_exit.h>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

#include <algorithm>
#include <fstream>

// The resource that a signed library carries.
#include <NXSigningResource.cpp>

namespace contract {
namespace {

enum Outcome { asAssumed, otherwise, notTried };

/// A check and what came of it.
struct Finding {
    const char* name;
    Look look;
    Outcome outcome = notTried;
    std::string text = "is not begun";

    std::string line() const {
        const char* const heads[] = {"as assumed  ", "OTHERWISE   ", "not tried   "};
        return std::string(heads[outcome]) + name + (text.empty() ? "" : ": " + text) + "\n";
    }
};

/// Of the host's session: each run adds to them.
std::vector<Finding> findings;

std::filesystem::path reportFile() {
    return temporaryFolder() / "nx-contract.txt";
}

void writeReport() {
    std::ofstream out(reportFile(), std::ios::trunc);
    out << "Pivra for NX " PIVRA_VERSION ", contract with the host\n\n";
    for (const auto& finding : findings) out << finding.line();
}

/// The report is written before and after, so that it names a check that ends the host.
void tryOut(Finding& finding) {
    finding.outcome = otherwise;
    finding.text = "the host ended while this was tried";
    writeReport();
    try {
        const nx::UfSession session;
        succeed({{"UF_initialize", session.status()}});
        finding.look();
        finding.outcome = asAssumed;
        finding.text.clear();
    } catch (const Needs& needs) {
        finding.outcome = notTried;
        finding.text = "needs " + needs.what;
    } catch (...) {
        finding.text = platform::currentErrorText("an exception without a text");
    }
    writeReport();
}

void tryWhatIsLeft() {
    for (auto& finding : findings)
        if (finding.outcome == notTried) tryOut(finding);
}

std::string count(Outcome outcome) {
    return std::to_string(std::count_if(findings.begin(), findings.end(),
                                        [=](const Finding& finding) { return finding.outcome == outcome; }));
}

/// How many checks came out how, each that came out otherwise, and where the report is.
std::string summary() {
    std::string text =
        count(asAssumed) + " as assumed, " + count(otherwise) + " otherwise, " + count(notTried) + " not tried\n";
    for (const auto& finding : findings)
        if (finding.outcome == otherwise) text += finding.line();
    return text + "\n" + platform::utf8FromPath(reportFile());
}

void run() {
    if (findings.empty()) {
        addHostChecks();
        addDialogChecks();
        addPartChecks();
    }
    tryWhatIsLeft();
    const auto dialogError = platform::errorOf([] { showDialog(tryWhatIsLeft); });
    const auto text = summary() + (dialogError ? "\n\nThe dialog was not shown: " + *dialogError : "");
    NXOpen::UI::GetUI()->NXMessageBox()->Show(nx::toHost("Pivra contract"), NXOpen::NXMessageBox::DialogTypeInformation,
                                              nx::toHost(text));
}

}  // namespace

void check(const char* name, Look look) {
    findings.push_back({name, look});
}

}  // namespace contract

extern "C" {

DllExport void ufusr(char* /*param*/, int* /*retcod*/, int /*param_len*/) {
    // No exception goes back to the host. There is no box either then: the file has what was found.
    platform::errorOf(contract::run);
}

/// The findings live in the library, so it stays as the plug-in does.
DllExport int ufusr_ask_unload() {
    return UF_UNLOAD_UG_TERMINATE;
}

DllExport void ufusr_cleanup() {}
}
