// Replays: each is accepted, or refused with a sentence that names the place.
#include "target.h"

#include <devkit/nxhost/replay.h>

#include <stdexcept>

void check(const std::string& input) try {
    const auto replay = nxhost::readReplay(folder().writeFile("replay.json", input), false);
    require(replay.text == input && replay.steps.is_array() && replay.expect.is_array(), "a replay is whole");
} catch (const std::runtime_error& error) {
    const std::string text = error.what();
    require(text.starts_with("replay") || text.starts_with("session."), "a refusal names the place");
    require(text.find(": ") != std::string::npos && !text.ends_with(' '), "a refusal says what is wrong");
}
