// What the fuzz targets share. A target takes any bytes, and breaks off the program when one of its rules is broken.
#pragma once

#include <support/plugin_folder.h>
#include "config/properties.h"
#include "logging/log.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

/// The target: each program has one.
void check(const std::string& input);

inline void require(bool holds, const char* rule) {
    if (holds) return;
    std::fprintf(stderr, "Broken rule: %s\n", rule);
    std::abort();
}

inline std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/// The program's folder for files, which stands in for the plug-in's.
inline const test_support::PluginFolder& folder() {
    static const auto instance = [] {
        // What its end uses is made before it.
        config::LoadProperties();
        logging::setLogDirectory({});
        return std::make_unique<test_support::PluginFolder>();
    }();
    return *instance;
}
