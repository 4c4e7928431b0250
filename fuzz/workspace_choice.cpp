// Which workspace the user has chosen. Each line is the name of one; the host says the choice by number and as a text.
#include "service/workspaces.h"
#include "target.h"
#include "ui/dialog_text.h"

void check(const std::string& input) {
    const auto lines = linesOf(input);
    std::vector<std::string> names;
    for (const auto& line : lines) names.push_back(pivra::workspaceLabel(line));
    for (std::size_t i = 0; i < names.size(); ++i) {
        const int number = static_cast<int>(i);
        require(ui::selectedIndex(names, names[i], number) == i, "a name beside its number is that choice");
        require(ui::selectedIndex(names, std::to_string(i), number) == i, "a number as text is that choice");
        const auto beside = ui::selectedIndex(names, names[i], number + 1);
        require(i + 1 == names.size() ? !beside : beside == i + 1, "the number decides, and not a name");
    }
    for (const int number : {-1, 0, static_cast<int>(names.size())}) {
        const auto chosen = ui::selectedIndex(names, input, number);
        require(!chosen || *chosen < names.size(), "a choice is one of the list");
    }
}
