#include "report.h"

#include "parts.h"

#include <nx/text.h>
#include <platform/environment.h>
#include <platform/text_encoding.h>

#include <algorithm>
#include <exception>
#include <fstream>

namespace contract {
namespace {

std::filesystem::path newFile() {
    const auto folder = temporaryFolder();
    auto file = folder / "nx-contract.txt";
    for (int number = 2; std::filesystem::exists(file); ++number)
        file = folder / ("nx-contract-" + std::to_string(number) + ".txt");
    return file;
}

}  // namespace

Report::Report() : file_(newFile()), head_("Pivra for NX " PIVRA_VERSION ", contract with the host\n") {
    const auto host = platform::environmentPath("UGII_BASE_DIR");
    head_ += "host: " + (host ? platform::utf8FromPath(*host) : "UGII_BASE_DIR is not set") + "\n";
    for (const auto& group :
         {hostChecks(), dialogChecks(), partChecks(), assemblyChecks(), drawingChecks(), managedChecks()})
        for (const auto& check : group) findings_.push_back({check});
}

void Report::tryWhatIsLeft() {
    forgetDialog();
    noteDisplayedPart();
    for (auto& finding : findings_)
        if (finding.outcome == Outcome::notTried) look(finding);
}

void Report::look(Finding& finding) {
    finding.outcome = Outcome::otherwise;
    finding.text = "the host ended while this was tried";
    write();
    try {
        finding.text = finding.check.look();
        if (finding.text.empty()) finding.outcome = Outcome::asAssumed;
    } catch (const Needs& needs) {
        finding.outcome = Outcome::notTried;
        finding.text = "needs " + needs.what;
    } catch (const std::exception& error) {
        finding.text = error.what();
    } catch (...) {
        finding.text = "an exception that is no std::exception";
    }
    write();
}

void Report::noteDisplayedPart() {
    std::string name = "none";
    try {
        name = nx::utf8(displayedPart().FullPath());
    } catch (...) {
        // The checks find out why.
    }
    head_ += "run with the displayed part: " + name + "\n";
}

std::string Report::lineOf(const Finding& finding) {
    const std::string name = finding.check.name;
    switch (finding.outcome) {
        case Outcome::asAssumed:
            return "as assumed  " + name + "\n";
        case Outcome::otherwise:
            return "OTHERWISE   " + name + ": " + finding.text + "\n";
        case Outcome::notTried:
            break;
    }
    return "not tried   " + name + ": " + finding.text + "\n";
}

void Report::write() const {
    std::ofstream out(file_, std::ios::trunc);
    out << head_ << "\n";
    for (const auto& finding : findings_) out << lineOf(finding);
}

std::string Report::summary() const {
    const auto count = [this](Outcome outcome) {
        return std::to_string(std::count_if(findings_.begin(), findings_.end(),
                                            [=](const Finding& finding) { return finding.outcome == outcome; }));
    };
    std::string text = count(Outcome::asAssumed) + " as assumed, " + count(Outcome::otherwise) + " otherwise, " +
                       count(Outcome::notTried) + " not tried\n";
    for (const auto& finding : findings_)
        if (finding.outcome == Outcome::otherwise) text += lineOf(finding);
    return text + "\n" + platform::utf8FromPath(file_);
}

}  // namespace contract
