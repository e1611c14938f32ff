#pragma once
// Reads data/plan.tsv: the whole finished plan worked out by hand and calculator from the written prices, one line per
// entry. Whoever makes the plan must arrive at the same lines.

#include <fstream>
#include <string>
#include <vector>

#ifndef TILMARCH_TEST_DATA
#define TILMARCH_TEST_DATA "tests/data" // for tools that do not know the build's flags
#endif

namespace tilm {

// Lines without the heading; empty when the file cannot be read.
inline std::vector<std::string> read_plan_table(const std::string &path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line[0] != '#') {
            lines.push_back(line);
        }
    }
    return lines;
}

inline std::string first_column(const std::string &line) {
    return line.substr(0, line.find('\t'));
}

} // namespace tilm
