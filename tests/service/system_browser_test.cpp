#include "service/system_browser.h"

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
    EXPECT_THROW(auth::openSystemBrowser("https://a/", [](auto&) { return 32; }), std::runtime_error);
    EXPECT_EQ(opened, (std::vector<std::string>{"https://login/?a=b", "HTTP://127.0.0.1:1/"}));
}

}  // namespace
