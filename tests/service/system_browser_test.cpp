#include <platform/error_text.h>
#include <service/system_browser.h>

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

TEST(SystemBrowser, OpensWebAddressesOnly) {
    std::vector<std::string> opened;
    const auto shell = [&opened](const std::string& address) { return opened.push_back(address), 33; };
    auth::openSystemBrowser("https://login/?a=b", shell);
    auth::openSystemBrowser("HTTP://127.0.0.1:1/", shell);
    for (const char* address : {"", "file:///c:/windows", "calc.exe", "https:/login", "javascript:1", " https://a/",
                                "https://a b/", "https://a/\"x", "https://a/\n", "https://\xC3\xA4/"}) {
        EXPECT_THROW(auth::openSystemBrowser(address, shell), std::runtime_error) << address;
    }
    EXPECT_EQ(opened, (std::vector<std::string>{"https://login/?a=b", "HTTP://127.0.0.1:1/"}));
}

TEST(SystemBrowser, SaysWhenTheShellFails) {
    for (const int result : {0, 2, 32}) {
        try {
            auth::openSystemBrowser("https://login/", [result](const std::string&) { return result; });
            ADD_FAILURE() << result;
        } catch (const std::runtime_error& failure) {
            EXPECT_STREQ(failure.what(), "Failed to launch the system browser for Pivra authentication.");
            EXPECT_EQ(platform::currentErrorChain(""),
                      std::string(failure.what()) + " The shell's result is " + std::to_string(result) + ".");
        }
    }
}

}  // namespace
