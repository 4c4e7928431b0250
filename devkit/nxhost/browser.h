// The browser: notes the addresses that the plug-in opens, and answers them as its user does.
#pragma once

#include "transcript.h"

#include <cstddef>
#include <string>
#include <vector>

namespace nxhost {

class Browser {
 public:
    Browser(Transcript& transcript, bool present) : transcript_(transcript), present_(present) {}

    void setPresent(bool present) { present_ = present; }

    /// The shell's call: notes the address. Returns the shell's result, 33, or 31 when there is no browser.
    int open(const std::string& address);

    /// Address number `opened`, from 1; 0 is the latest. Throws StepError when there is none.
    const std::string& address(int opened) const;

    /// Signs in or refuses on the page of a sign-in address, and waits until the service has nothing more to do.
    void answer(const std::string& address, bool accept);
    /// Loads a page and notes its status, title and text.
    void load(const std::string& address);

 private:
    Transcript& transcript_;
    bool present_;
    std::vector<std::string> opened_;
};

}  // namespace nxhost
