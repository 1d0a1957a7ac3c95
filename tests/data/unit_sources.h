// Definitions of the units, read from the sources of the database.
#pragma once

#include "source_file.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

inline const tvdata::Catalogue& catalogue() {
    static const tvdata::Catalogue all = [] {
        tvdata::Catalogue read;
        tvdata::CompoundFactors compounds(read);
        for (const std::string& path : tvdata::splitList(TVTYPES_UNIT_SOURCES)) {
            tvdata::readSourceFile(path, read, compounds);
        }
        return read;
    }();
    return all;
}

/// Compounds that occur in models.
inline std::vector<std::string> compounds() {
    std::ifstream file(TVTYPES_TEST_DATA "/compounds.txt");
    return {std::istream_iterator<std::string>(file), {}};
}
