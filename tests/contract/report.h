// What came of the checks so far in this session of the host, and the file that says so.
#pragma once

#include "check.h"

#include <filesystem>
#include <string>
#include <vector>

namespace contract {

class Report {
 public:
    /// Chooses a new file in the user's folder for temporary files. Throws Needs when there is none.
    Report();

    /// Tries each check that could not be tried before. The file is up to date before and after each of them, so that
    /// it names the one that ended the host.
    void tryWhatIsLeft();
    /// How many checks came out how, each that came out otherwise, and where the file is.
    std::string summary() const;

 private:
    enum class Outcome { asAssumed, otherwise, notTried };
    struct Finding {
        Check check;
        Outcome outcome = Outcome::notTried;
        std::string text = "is not begun";
    };

    void look(Finding& finding);
    void noteDisplayedPart();
    void write() const;
    static std::string lineOf(const Finding& finding);

    std::filesystem::path file_;
    std::string head_;
    std::vector<Finding> findings_;
};

}  // namespace contract
