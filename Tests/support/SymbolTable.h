#pragma once

#include "ProjectPaths.h"

#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// The rows of data/symbols.csv: symbol and icon.
inline std::vector<std::pair<std::string, std::string>> symbolTable() {
    std::ifstream file{ProjectPaths::symbols};
    std::vector<std::pair<std::string, std::string>> rows;
    std::string line;
    std::getline(file, line);  // the columns' names
    while (std::getline(file, line)) {
        const auto comma = line.find(',');
        rows.emplace_back(line.substr(0, comma), line.substr(comma + 1));
    }
    return rows;
}

}  // namespace orvu
