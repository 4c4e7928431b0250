#include "service/system_browser.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace {

// What is no web address is in tests/replays/addresses-refused.json.
TEST(SystemBrowser, OpensWebAddresses) {
    std::string opened;
    auth::openSystemBrowser("HTTP://127.0.0.1:1/", [&opened](auto& address) { return opened = address, 33; });
    EXPECT_EQ(opened, "HTTP://127.0.0.1:1/");
    EXPECT_THROW(auth::openSystemBrowser("https://a/", [](auto&) { return 32; }), std::runtime_error);
}

}  // namespace
