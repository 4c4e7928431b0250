// The browser: notes the addresses that the plug-in opens, and answers them as its user does.
#pragma once

#include "transcript.h"

#include <cstddef>
#include <filesystem>
#include <future>
#include <string>
#include <utility>
#include <vector>

namespace nxhost {

class Browser {
 public:
    /// `program`, unless it is empty, is started with each address that is opened.
    Browser(Transcript& transcript, bool present, std::filesystem::path program)
        : transcript_(transcript), present_(present), program_(std::move(program)) {}

    void setPresent(bool present) { present_ = present; }

    /// The shell's call: notes the address and starts the program. Returns the shell's result, 33, or 31 when there is
    /// no browser.
    int open(const std::string& address);

    /// Address number `opened`, from 1; 0 is the latest. Throws std::runtime_error when there is none.
    const std::string& address(int opened) const;

    /// Signs in or refuses on the page of a sign-in address, and waits until the service is idle.
    void answer(const std::string& address, bool accept);
    /// Loads a page and notes its status, title and text.
    void load(const std::string& address);

    /// Waits until each program started so far has ended, notes how, and then waits until the service is
    /// idle. Throws std::runtime_error when none has been started since the last call or one ended with another status
    /// than 0.
    void finish();

 private:
    struct Visit {
        std::string address;
        std::future<int> status;
    };

    Transcript& transcript_;
    bool present_;
    std::filesystem::path program_;
    std::vector<std::string> opened_;
    std::vector<Visit> visits_;
};

}  // namespace nxhost
