#include "text.h"

#include <http_client.h>
#include <algorithm>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <random>

namespace gopiv {

std::string utcNow() {
    using namespace boost::posix_time;
    return to_iso_extended_string(second_clock::universal_time()) + "Z";
}

std::string randomSecret() {
    std::random_device device;
    std::uniform_int_distribution<std::size_t> digit(0, 15);
    std::string secret(devkit::secretMark);
    std::generate_n(std::back_inserter(secret), 64 - secret.size(), [&] { return "0123456789abcdef"[digit(device)]; });
    return secret;
}

}  // namespace gopiv
